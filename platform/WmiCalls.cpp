// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Com.h"
#include "platform/Text.h"
#include "platform/WmiSession.h"

#include <oleauto.h>
#include <wbemidl.h>

#include <optional>

namespace platform
{

namespace
{

class BasicString
{
public:
    explicit BasicString(const QString &text)
        : m_text(SysAllocStringLen(wide(text), static_cast<UINT>(text.size())))
    {
    }
    BasicString(const BasicString &) = delete;
    BasicString &operator=(const BasicString &) = delete;
    ~BasicString() { SysFreeString(m_text); }

    BSTR get() const { return m_text; }

private:
    BSTR m_text;
};

QString fromBasic(BSTR text)
{
    return text ? fromWide(text, static_cast<qsizetype>(SysStringLen(text))) : QString();
}

// The strings of an array; both bounds are inclusive.
QStringList textsOf(SAFEARRAY *array)
{
    QStringList texts;
    LONG lower = 0;
    LONG upper = -1;
    if (!array || SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &lower)) ||
        FAILED(SafeArrayGetUBound(array, 1, &upper)))
        return texts;
    for (LONG i = lower; i <= upper; ++i) {
        BSTR text = nullptr;
        if (SUCCEEDED(SafeArrayGetElement(array, &i, &text)))
            texts << fromBasic(text);
        SysFreeString(text);
    }
    return texts;
}

// nullopt for null, and for types that none of our properties has.
std::optional<QVariant> toVariant(const VARIANT &value)
{
    switch (value.vt) {
    case VT_BSTR:
        return fromBasic(value.bstrVal);
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE;
    case VT_I4:
    case VT_UI4:
        return static_cast<qint32>(value.lVal);
    case VT_I2:
        return static_cast<qint32>(value.iVal);
    case VT_UI2:
        return static_cast<qint32>(value.uiVal);
    case VT_UI1:
        return static_cast<qint32>(value.bVal);
    case VT_I1:
        return static_cast<qint32>(value.cVal);
    case VT_I8:
        return QString::number(value.llVal);
    case VT_UI8:
        return QString::number(value.ullVal);
    case VT_R4:
        return static_cast<double>(value.fltVal);
    case VT_R8:
        return value.dblVal;
    case VT_ARRAY | VT_BSTR:
        return textsOf(value.parray);
    default:
        return {};
    }
}

class WindowsWmiCalls : public WmiCalls
{
public:
    // S_FALSE (already initialised) is a success and must be balanced too.
    long initialize() override { return CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }

    long createLocator() override
    {
        return CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                                m_locator.putVoid());
    }

    long connectServer(const QString &scope) override
    {
        return m_locator->ConnectServer(BasicString(scope).get(), nullptr, nullptr, nullptr, 0, nullptr,
                                        nullptr, m_services.put());
    }

    long setProxyBlanket() override
    {
        return CoSetProxyBlanket(m_services.get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                 RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
    }

    long execQuery(const QString &wql) override
    {
        return m_services->ExecQuery(BasicString(QStringLiteral("WQL")).get(), BasicString(wql).get(),
                                     WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                     m_rows.put());
    }

    long next(const QStringList &properties, core::WmiRow &row) override
    {
        ComPointer<IWbemClassObject> object;
        ULONG count = 0;
        const HRESULT result = m_rows->Next(static_cast<long>(WBEM_INFINITE), 1, object.put(), &count);
        if (FAILED(result) || count == 0)
            return FAILED(result) ? result : static_cast<long>(WBEM_S_FALSE);
        for (const QString &property : properties)
            read(object, property, row);
        return WBEM_S_NO_ERROR;
    }

    void closeQuery() override { m_rows.reset(); }
    void disconnect() override
    {
        m_rows.reset();
        m_services.reset();
        m_locator.reset();
    }
    void uninitialize() override { CoUninitialize(); }

private:
    static void read(const ComPointer<IWbemClassObject> &object, const QString &property, core::WmiRow &row)
    {
        VARIANT value;
        VariantInit(&value);
        if (SUCCEEDED(object->Get(wide(property), 0, &value, nullptr, nullptr))) {
            if (const std::optional<QVariant> known = toVariant(value))
                row.set(property, *known);
        }
        VariantClear(&value);
    }

    ComPointer<IWbemLocator> m_locator;
    ComPointer<IWbemServices> m_services;
    ComPointer<IEnumWbemClassObject> m_rows;
};

} // namespace

std::unique_ptr<WmiCalls> windowsWmiCalls()
{
    return std::make_unique<WindowsWmiCalls>();
}

} // namespace platform
