// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMutex>
#include <QStringList>

#include <initializer_list>

namespace tests
{

inline QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QLatin1StringView(text));
    return list;
}

// Takes the debug log while it lives; nothing of it is printed.
class LogCapture
{
public:
    LogCapture()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler(take);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    // What stands behind a label, line by line, without the spaces around and the quotes of texts.
    static QStringList values(const QString &label)
    {
        QStringList found;
        const QMutexLocker lock(&s_mutex);
        for (const QString &line : std::as_const(s_lines)) {
            if (!line.startsWith(label))
                continue;
            QString value = line.mid(label.size()).trimmed();
            if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
                value = value.mid(1, value.size() - 2);
            found.append(value);
        }
        return found;
    }
    static QList<int> numbers(const QString &label)
    {
        QList<int> found;
        for (const QString &value : values(label))
            found.append(value.toInt());
        return found;
    }
    static qsizetype count(const QString &line)
    {
        const QMutexLocker lock(&s_mutex);
        return s_lines.count(line);
    }
    static void clear()
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.clear();
    }

private:
    static void take(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.append(text);
    }

    inline static QMutex s_mutex;
    inline static QStringList s_lines;
    QtMessageHandler m_previous;
};

} // namespace tests
