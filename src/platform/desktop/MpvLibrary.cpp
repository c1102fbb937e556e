#include "platform/desktop/MpvLibrary.h"

#include <dlfcn.h>
#include <optional>
#include <system_error>
#include <thread>

namespace orvalen {
namespace {

constexpr const char* fileName = "libmpv.so.2"; // the number is the interface version of mpv/client.h

std::optional<MpvLibrary> open() {
    void* const file = ::dlopen(fileName, RTLD_LAZY | RTLD_LOCAL);
    if (!file)
        return std::nullopt;
    bool complete = true;
    const auto find = [&](const char* name, auto& function) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(file, name));
        complete = complete && function;
    };
    MpvLibrary library{};
    find("mpv_create", library.create);
    find("mpv_initialize", library.initialize);
    find("mpv_terminate_destroy", library.terminateDestroy);
    find("mpv_set_option", library.setOption);
    find("mpv_set_option_string", library.setOptionString);
    find("mpv_set_property_string", library.setPropertyString);
    find("mpv_get_property", library.getProperty);
    find("mpv_get_property_async", library.getPropertyAsync);
    find("mpv_observe_property", library.observeProperty);
    find("mpv_set_wakeup_callback", library.setWakeupCallback);
    find("mpv_wait_event", library.waitEvent);
    find("mpv_command", library.command);
    find("mpv_error_string", library.errorString);
    return complete ? std::optional(library) : std::nullopt;
}

} // namespace

const MpvLibrary* MpvLibrary::load() {
    static const std::optional<MpvLibrary> library = open();
    return library ? &*library : nullptr;
}

void MpvLibrary::loadInBackground() {
    try {
        std::thread(load).detach();
    } catch (const std::system_error&) { // no thread available: the first sound loads libmpv
    }
}

} // namespace orvalen
