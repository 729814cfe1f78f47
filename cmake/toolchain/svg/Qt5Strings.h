// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the SVG module of Qt 5.15 expects of Qt and Qt 6 has no more. Included before each of its files.
#ifdef __cplusplus

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QStringView>
#include <QTransform>
#include <QXmlStreamReader>

// Part of a text that somebody else keeps. Qt 5 named the whole text and a position in it; here the part is
// its own whole, from which smaller parts are taken.
class QStringRef : public QStringView
{
public:
    QStringRef() = default;
    QStringRef(QStringView text) : QStringView(text) {}
    QStringRef(const QString *text) : QStringView(*text) {}
    QStringRef(const QString *text, qsizetype position, qsizetype length)
        : QStringView(QStringView(*text).mid(position, length))
    {
    }
    QStringRef(const QStringRef *part, qsizetype position, qsizetype length)
        : QStringView(part->mid(position, length))
    {
    }

    // Never null: numbers are read up to what is none.
    const QChar *data() const
    {
        static constexpr QChar end;
        return isNull() ? &end : QStringView::data();
    }
    const QChar *constData() const { return data(); }

    const QStringRef *string() const { return this; }
    qsizetype position() const { return 0; }
};

// As QStringRef, with the text kept alive.
class QXmlStreamStringRef
{
public:
    QXmlStreamStringRef() = default;
    QXmlStreamStringRef(const QStringRef &text) : m_text(text.toString()) {}
    operator QStringRef() const { return QStringRef(&m_text); }

private:
    QString m_text;
};

#endif
