// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/Wmi.h"

#include <functional>
#include <memory>
#include <string>

namespace platform
{

// The calls of one WMI session, in the order in which they are made. Each answers with an HRESULT and may
// wait for as long as WMI likes. Tests put a fake in its place.
class WmiCalls
{
public:
    virtual ~WmiCalls() = default;

    virtual long initialize() = 0; // COM for this thread
    virtual long createLocator() = 0;
    virtual long connectServer(const QString &scope) = 0;
    virtual long setProxyBlanket() = 0;
    virtual long execQuery(const QString &wql) = 0;
    // S_OK with an object, S_FALSE at the end.
    virtual long next(const QStringList &properties, core::WmiRow &row) = 0;

    virtual void closeQuery() = 0;
    virtual void disconnect() = 0;   // releases services and locator, if any
    virtual void uninitialize() = 0; // after an initialize() that succeeded
};

std::unique_ptr<WmiCalls> windowsWmiCalls();

// Where the diagnostics go; by default to standard output.
using WmiOutput = std::function<void(const std::string &text)>;
void writeToStandardOutput(const std::string &text);

// Answers WMI questions on the thread that it was made on. The connection is kept from one question to the
// next of the same scope, so that a page with several connects once. The step that fails is written to the
// output, and the next question begins again with it.
class WmiSession : public core::WmiSource
{
public:
    // `cancel` ends an answer between two objects. Both outlive the session.
    WmiSession(std::unique_ptr<WmiCalls> calls, const core::CancelFlag &cancel,
               WmiOutput output = writeToStandardOutput);
    ~WmiSession() override;

    // No answer holds more objects than anybody reads.
    static constexpr int maxRows = 5000;

    core::WmiAnswer query(const core::WmiQuery &query,
                          const std::function<void(const core::WmiRow &)> &take) override;
    void noteFailure(const core::WmiQuery &query, quint32 code) override;

private:
    bool connectTo(const QString &scope);
    bool succeeded(long result, const char *text);
    core::WmiAnswer fetch(const core::WmiQuery &query, const std::function<void(const core::WmiRow &)> &take);
    void disconnect();

    std::unique_ptr<WmiCalls> m_calls;
    const core::CancelFlag &m_cancel;
    WmiOutput m_output;
    bool m_initialized = false;
    QString m_scope; // that it is connected to; empty: none
};

} // namespace platform
