// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WmiSession.h"

#include <QDebug>

#include <cstdio>
#include <utility>

namespace platform
{

namespace
{

constexpr long noMore = 1; // WBEM_S_FALSE

bool failed(long result)
{
    return result < 0;
}

std::string hexadecimal(long code)
{
    return QString::number(static_cast<quint32>(code), 16).toStdString();
}

} // namespace

void writeToStandardOutput(const std::string &text)
{
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

WmiSession::WmiSession(std::unique_ptr<WmiCalls> calls, const core::CancelFlag &cancel, WmiOutput output)
    : m_calls(std::move(calls)),
      m_cancel(cancel),
      m_output(std::move(output))
{
}

WmiSession::~WmiSession()
{
    disconnect();
}

void WmiSession::disconnect()
{
    m_scope.clear();
    if (!std::exchange(m_initialized, false))
        return;
    m_calls->disconnect();
    m_calls->uninitialize();
}

bool WmiSession::succeeded(long result, const char *text)
{
    if (failed(result))
        m_output(text + hexadecimal(result) + '\n');
    return !failed(result);
}

bool WmiSession::connectTo(const QString &scope)
{
    if (m_scope == scope)
        return true;
    disconnect();
    m_initialized = succeeded(m_calls->initialize(), "Failed to initialize COM library. Error code = 0x");
    if (!m_initialized)
        return false;
    bool connected =
        succeeded(m_calls->createLocator(), "Failed to create IWbemLocator object. Err code = 0x") &&
        succeeded(m_calls->connectServer(scope), "Could not connect. Error code = 0x");
    if (connected) {
        m_output("Connected to " + scope.toStdString() + " WMI namespace\n");
        connected = succeeded(m_calls->setProxyBlanket(), "Could not set proxy blanket. Error code = 0x");
    }
    if (connected)
        m_scope = scope;
    else
        disconnect();
    return connected;
}

core::WmiAnswer WmiSession::query(const core::WmiQuery &query,
                                  const std::function<void(const core::WmiRow &)> &take)
{
    qDebug("readSysInfoWMI");
    if (m_cancel.isSet())
        return core::WmiAnswer::Stopped;
    if (!connectTo(query.scope))
        return core::WmiAnswer::Failed;
    const long result = m_calls->execQuery(query.text);
    if (failed(result)) {
        noteFailure(query, static_cast<quint32>(result));
        disconnect();
        return core::WmiAnswer::Failed;
    }
    const core::WmiAnswer answer = fetch(query, take);
    m_calls->closeQuery();
    return answer;
}

core::WmiAnswer WmiSession::fetch(const core::WmiQuery &query,
                                  const std::function<void(const core::WmiRow &)> &take)
{
    for (int count = 0;; ++count) {
        if (m_cancel.isSet())
            return core::WmiAnswer::Stopped;
        core::WmiRow row;
        const long result = m_calls->next(query.properties, row);
        if (failed(result))
            return core::WmiAnswer::Failed;
        if (result == noMore)
            return core::WmiAnswer::Complete;
        if (count == maxRows)
            return core::WmiAnswer::TooMany;
        take(row);
    }
}

void WmiSession::noteFailure(const core::WmiQuery &query, quint32 code)
{
    m_output(query.failure.toStdString() + " Error code = 0x" + hexadecimal(static_cast<long>(code)) + '\n');
}

} // namespace platform
