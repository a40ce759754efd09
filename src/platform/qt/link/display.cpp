// Looks for a display server.
#include "src/platform/qt/link/display.h"

#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

static std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

// Uses libxcb itself, which knows all forms of a display's name and the authority file. Qt loads it anyway.
static bool CanConnectToX11()
{
    if (Variable("DISPLAY").empty())
        return false;
    void* library = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return false;
    using Connect = void*(const char*, int*);
    using HasError = int(void*);
    using Disconnect = void(void*);
    const auto connect = reinterpret_cast<Connect*>(dlsym(library, "xcb_connect"));
    const auto has_error = reinterpret_cast<HasError*>(dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect*>(dlsym(library, "xcb_disconnect"));
    if (!connect || !has_error || !disconnect)
        return false;
    void* connection = connect(nullptr, nullptr);
    const bool connected = connection && has_error(connection) == 0;
    disconnect(connection);
    return connected;
}

static bool CanConnectToWayland()
{
    std::string path = Variable("WAYLAND_DISPLAY");
    if (path.empty())
        return false;
    if (path[0] != '/')
        path = Variable("XDG_RUNTIME_DIR") + '/' + path;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    const bool connected =
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return connected;
}

bool CanOpenDisplay()
{
    const std::string platform = Variable("QT_QPA_PLATFORM");
    if (platform.empty())
        return CanConnectToX11() || CanConnectToWayland();
    if (platform.starts_with("xcb"))
        return CanConnectToX11();
    if (platform.starts_with("wayland"))
        return CanConnectToWayland();
    return true;  // offscreen, a frame buffer, a remote screen
}
