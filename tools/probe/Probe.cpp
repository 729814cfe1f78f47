// SPDX-License-Identifier: GPL-3.0-or-later

// Loaded through QT_QPA_GENERIC_PLUGINS. Five times a second it writes what a person would see to the file
// that LARKSPUR_PROBE names: every visible widget with its place on the screen, and the top rows of every
// visible item view. It only looks; the tour clicks with the mouse.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QFileInfo>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSaveFile>
#include <QTimer>
#include <QTreeView>
#include <QWidget>

namespace
{

QJsonArray onScreen(const QWidget &widget, const QRect &rect)
{
    // Device pixels: what the mouse is moved by.
    const qreal scale = widget.devicePixelRatioF();
    const QPoint corner = widget.mapToGlobal(rect.topLeft());
    return {corner.x() * scale, corner.y() * scale, rect.width() * scale, rect.height() * scale};
}

QString textOf(const QWidget &widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return button->text();
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->text();
    if (const auto *edit = qobject_cast<const QLineEdit *>(&widget))
        return edit->text();
    if (const auto *bar = qobject_cast<const QProgressBar *>(&widget))
        return bar->text();
    return {};
}

// What a screen reader calls it, labels beside it included.
QString readerName(const QWidget &widget)
{
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(&widget));
    return reader ? reader->text(QAccessible::Name) : QString();
}

void addRows(const QAbstractItemView &view, const QModelIndex &parent, QJsonArray &rows)
{
    constexpr int maxRows = 60;
    const QAbstractItemModel &model = *view.model();
    const auto *tree = qobject_cast<const QTreeView *>(&view);
    for (int row = 0; row < model.rowCount(parent) && rows.size() < maxRows; ++row) {
        const QModelIndex first = model.index(row, 0, parent);
        QJsonArray cells;
        for (int column = 0; column < model.columnCount(parent); ++column)
            cells.append(model.index(row, column, parent).data(Qt::DisplayRole).toString());
        rows.append(
            QJsonObject{{QStringLiteral("cells"), cells},
                        {QStringLiteral("rect"), onScreen(*view.viewport(), view.visualRect(first))}});
        if (tree && tree->isExpanded(first))
            addRows(view, first, rows);
    }
}

QJsonObject describe(const QWidget &widget)
{
    QJsonObject object{{QStringLiteral("name"), widget.objectName()},
                       {QStringLiteral("class"), QString::fromLatin1(widget.metaObject()->className())},
                       {QStringLiteral("text"), textOf(widget)},
                       {QStringLiteral("accessible"), widget.accessibleName()},
                       {QStringLiteral("reader"), readerName(widget)},
                       {QStringLiteral("enabled"), widget.isEnabled()},
                       {QStringLiteral("focus"), widget.hasFocus()},
                       {QStringLiteral("tab"), (widget.focusPolicy() & Qt::TabFocus) != 0},
                       {QStringLiteral("clipped"), widget.visibleRegion().boundingRect() != widget.rect()},
                       {QStringLiteral("rect"), onScreen(widget, widget.rect())}};
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&widget); view && view->model()) {
        QJsonArray rows;
        addRows(*view, view->rootIndex(), rows);
        object.insert(QStringLiteral("rows"), rows);
    }
    return object;
}

void writeSnapshot(const QString &path)
{
    QJsonArray widgets;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (widget->isVisible() && !widget->visibleRegion().isEmpty())
            widgets.append(describe(*widget));
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(widgets).toJson(QJsonDocument::Compact));
        file.commit();
    }
}

class FormPictures : public QObject
{
public:
    explicit FormPictures(const QString &folder, QObject *parent) : QObject(parent), m_folder(folder) {}

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto className = QString::fromLatin1(watched->metaObject()->className());
        if (event->type() == QEvent::Show && className.endsWith(QLatin1String("Form")))
            QTimer::singleShot(60, watched, [this, watched, className] { save(watched, className); });
        return false;
    }

private:
    void save(QObject *watched, const QString &className) const
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (widget && widget->isVisible())
            widget->window()->grab().save(m_folder + QLatin1Char('/') + className + QLatin1String(".png"));
    }

    QString m_folder;
};

class ProbePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        auto *timer = new QTimer; // the application owns what a generic plugin creates
        const QString path = qEnvironmentVariable("LARKSPUR_PROBE");
        connect(timer, &QTimer::timeout, timer, [path] { writeSnapshot(path); });
        timer->start(200);
        qApp->installEventFilter(new FormPictures(QFileInfo(path).path(), timer));
        return timer;
    }
};

} // namespace

#include "Probe.moc"
