// SPDX-License-Identifier: GPL-3.0-or-later
// What the Windows Runtime plugin of Qt Positioning needs and mingw-w64's headers do not have: the request
// for the user's consent, Callback(), which makes a delegate of an object and one of its member functions,
// and Qt's macros for failed calls.
#pragma once

#include <QtCore/qglobal.h>
#include <QtCore/qt_windows.h>

#include <asyncinfo.h>
#include <roapi.h>
#include <windows.devices.geolocation.h>
#include <windows.foundation.h>
#include <winstring.h>
#include <wrl.h>

#include <atomic>

#define RETURN_HR_IF_FAILED(message)                                                                         \
    if (FAILED(hr)) {                                                                                        \
        qErrnoWarning(int(hr), message);                                                                     \
        return hr;                                                                                           \
    }
#define RETURN_FALSE_IF_FAILED(message)                                                                      \
    if (FAILED(hr)) {                                                                                        \
        qErrnoWarning(int(hr), message);                                                                     \
        return false;                                                                                        \
    }
#define RETURN_VOID_IF_FAILED(message)                                                                       \
    if (FAILED(hr)) {                                                                                        \
        qErrnoWarning(int(hr), message);                                                                     \
        return;                                                                                              \
    }

// As the documentation of Windows.Devices.Geolocation states it; the last two methods are not called.
namespace ABI::Windows::Devices::Geolocation
{

enum GeolocationAccessStatus {
    GeolocationAccessStatus_Unspecified = 0,
    GeolocationAccessStatus_Allowed = 1,
    GeolocationAccessStatus_Denied = 2
};

struct __declspec(novtable) AccessRequest : public IInspectable {
    virtual HRESULT STDMETHODCALLTYPE put_Completed(IUnknown *handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Completed(IUnknown **handler) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResults(GeolocationAccessStatus *result) = 0;
};

MIDL_INTERFACE("9a8e7571-2df5-4591-9f87-eb5fd894e9b7") IGeolocatorStatics : public IInspectable
{
    virtual HRESULT STDMETHODCALLTYPE RequestAccessAsync(AccessRequest * *request) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGeopositionHistoryAsync(Foundation::DateTime start,
                                                                 IUnknown * *history) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGeopositionHistoryWithDurationAsync(
        Foundation::DateTime start, Foundation::TimeSpan length, IUnknown * *history) = 0;
};

} // namespace ABI::Windows::Devices::Geolocation

__CRT_UUID_DECL(ABI::Windows::Devices::Geolocation::IGeolocatorStatics, 0x9a8e7571, 0x2df5, 0x4591, 0x9f,
                0x87, 0xeb, 0x5f, 0xd8, 0x94, 0xe9, 0xb7)

namespace Microsoft::WRL
{

// Interface is a delegate: IUnknown and one Invoke(). Windows calls it from threads of its own.
template <class Interface, class Object, class... Arguments>
class MemberDelegate final : public Interface
{
public:
    using Member = HRESULT (Object::*)(Arguments...);

    MemberDelegate(Object *object, Member member) : m_object(object), m_member(member) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void **found) override
    {
        if (wanted != __uuidof(IUnknown) && wanted != __uuidof(IAgileObject) &&
            wanted != __uuidof(Interface)) {
            *found = nullptr;
            return E_NOINTERFACE;
        }
        *found = static_cast<Interface *>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Invoke(Arguments... arguments) override
    {
        return (m_object->*m_member)(arguments...);
    }

private:
    Object *m_object;
    Member m_member;
    std::atomic<ULONG> m_references = 0;
};

template <class Interface, class Object, class... Arguments>
ComPtr<Interface> Callback(Object *object, HRESULT (Object::*member)(Arguments...))
{
    return ComPtr<Interface>(new MemberDelegate<Interface, Object, Arguments...>(object, member));
}

} // namespace Microsoft::WRL
