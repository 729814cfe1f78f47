// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/Wmi.h"

#include <functional>
#include <memory>
#include <string>

namespace platform
{

// The calls of one WMI session, in calling order. Each returns an HRESULT and may block. Replaced by a fake
// in tests.
class WmiCalls
{
public:
    virtual ~WmiCalls() = default;

    virtual long initialize() = 0; // initialises COM on this thread
    virtual long createLocator() = 0;
    virtual long connectServer(const QString &scope) = 0;
    virtual long setProxyBlanket() = 0;
    virtual long execQuery(const QString &wql) = 0;
    // S_OK with an object, S_FALSE at the end.
    virtual long next(const QStringList &properties, core::WmiRow &row) = 0;

    virtual void closeQuery() = 0;
    virtual void disconnect() = 0;   // releases services and locator, if any
    virtual void uninitialize() = 0; // only after a successful initialize()
};

std::unique_ptr<WmiCalls> windowsWmiCalls();

// Receives diagnostics; standard output by default.
using WmiOutput = std::function<void(const std::string &text)>;
void writeToStandardOutput(const std::string &text);

// Runs WMI queries on the thread that created it. The connection is kept between queries of the same scope,
// so that a page with several queries connects once. If a step fails, it is written to the output, and the
// next query starts again at that step.
class WmiSession : public core::WmiSource
{
public:
    // `cancel` ends a result between two objects. Both arguments outlive the session.
    WmiSession(std::unique_ptr<WmiCalls> calls, const core::CancelFlag &cancel,
               WmiOutput output = writeToStandardOutput);
    ~WmiSession() override;

    // Limit for the objects of one result.
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
    QString m_scope; // of the connection; empty if there is none
};

} // namespace platform
