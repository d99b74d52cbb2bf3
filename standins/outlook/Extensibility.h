// outlook/Extensibility.h: the add-in's side of the contract, as the Add-In Designer library declares it.
#pragma once
#include <windows.h>

#include <oaidl.h>

namespace standin {

enum class ConnectMode : int { AfterStartup = 0, Startup = 1 };
enum class DisconnectMode : int { HostShutdown = 0, UserClosed = 1 };

inline constexpr GUID iidExtensibility = {0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

struct Extensibility : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int mode, IDispatch* addIn,
                                                   SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnDisconnection(int mode, SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

}  // namespace standin
