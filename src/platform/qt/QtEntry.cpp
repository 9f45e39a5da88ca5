// SPDX-License-Identifier: MIT
#include "platform/qt/QtToolkit.h"
#include "platform/ui/ToolkitEntry.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QThread>

#include <clocale>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>

#include <xcb/xcb.h>

namespace KestrinProductEditor {

namespace {

// QApplication ends the process where it finds no display, so that has to be found out before.

/// Whether Qt has a plugin for such displays, and can load it.
[[nodiscard]] bool HasPlugin(const QString& name)
{
    QStringList folders = qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH").split(u':', Qt::SkipEmptyParts);
    QStringList parents = qEnvironmentVariable("QT_PLUGIN_PATH").split(u':', Qt::SkipEmptyParts);
    parents.append(QLibraryInfo::path(QLibraryInfo::PluginsPath));
    for (const QString& parent : parents)
        folders.append(parent + QStringLiteral("/platforms"));
    for (const QString& folder : folders) {
        const QDir plugins(folder);
        for (const QString& file : plugins.entryList({QStringLiteral("libq%1*.so").arg(name)}, QDir::Files)) {
            if (QPluginLoader(plugins.absoluteFilePath(file)).load())
                return true;
        }
    }
    return false;
}

[[nodiscard]] bool CanUseWayland()
{
    QString socket = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (socket.isEmpty() && qEnvironmentVariable("XDG_SESSION_TYPE") == QStringLiteral("wayland"))
        socket = QStringLiteral("wayland-0");
    if (socket.isEmpty())
        return false;
    const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return QFileInfo::exists(runtime.absoluteFilePath(socket)) && HasPlugin(QStringLiteral("wayland"));
}

struct Disconnect
{
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
/// A server may restart when its last client leaves, and turn away who comes meanwhile: the connection that
/// looked stays until Qt has its own.
using Look = std::unique_ptr<xcb_connection_t, Disconnect>;

[[nodiscard]] bool CanUseX11(Look& look)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") || !HasPlugin(QStringLiteral("xcb")))
        return false;
    look.reset(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(look.get()) == 0;
}

[[nodiscard]] bool HasDisplay(Look& look)
{
    // "xcb:option;wayland": what Qt tries one after the other.
    const QStringList wanted = qEnvironmentVariable("QT_QPA_PLATFORM").split(u';', Qt::SkipEmptyParts);
    if (wanted.isEmpty())
        return CanUseWayland() || CanUseX11(look);
    for (const QString& each : wanted) {
        const QString platform = each.section(u':', 0, 0);
        if (platform == QStringLiteral("xcb")
                ? CanUseX11(look)
                : !platform.startsWith(QStringLiteral("wayland")) || CanUseWayland())
            return true;
    }
    return false;
}

/// An application for a program that has none. It stays for the rest of the process: a host may show one
/// window after the other, and Qt does not bear a second application well.
void CreateApplication()
{
    static char name[] = "kstnedit";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    // Reachable for good, never destroyed.
    [[maybe_unused]] static QApplication* const application = new QApplication(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    // Qt takes the user's locale for the whole process; the host's own stays.
    static_cast<void>(std::setlocale(LC_ALL, locale.c_str()));
}

[[nodiscard]] const char* ReasonAgainst(std::string_view version)
{
    if (version != KSTNEDIT_VERSION)
        return "the library of windows has another version: " KSTNEDIT_VERSION;
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) {
        Look look;
        if (!HasDisplay(look))
            return "there is no display";
        CreateApplication();
        return nullptr;
    }
    if (qobject_cast<const QApplication*>(application) == nullptr)
        return "the program's Qt application object is not a QApplication";
    if (application->thread() != QThread::currentThread())
        return "windows belong to another thread of the program";
    return nullptr;
}

} // namespace

} // namespace KestrinProductEditor

extern "C" [[gnu::visibility("default")]] KestrinProductEditor::IToolkit*
kstnedit_toolkit(const char* version, const char** reason) noexcept
{
    using namespace KestrinProductEditor;
    try {
        static std::mutex mutex;
        const std::lock_guard lock(mutex);
        *reason = ReasonAgainst(version);
        if (*reason != nullptr)
            return nullptr;
        // Never destroyed: windows may be open when the process ends.
        static auto& toolkit = *new QtToolkit;
        return &toolkit;
    } catch (...) {
        *reason = "memory has run out";
        return nullptr;
    }
}

static_assert(std::is_same_v<decltype(&kstnedit_toolkit), KestrinProductEditor::ToolkitEntry>);
