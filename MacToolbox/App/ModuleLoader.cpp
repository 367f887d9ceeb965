#include "MacToolbox/App/ModuleLoader.h"

#include <algorithm>

#include <dlfcn.h>
#include <unistd.h>

namespace MacToolbox {

namespace {

constexpr const char* kModule = "wainroad-desktop.so";
constexpr const char* kEntry = "wr_make_desktop";

std::string lastError()
{
    const char* const error = dlerror();
    std::string text = error ? error : "unknown error";
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// The first place that holds the module, or an empty string.
std::string findModule()
{
    const std::string here = Platform::current().programFolder();
    for (const std::string& folder : {here, here + "/../lib/wainroad"})
        if (const std::string path = folder + "/" + kModule; access(path.c_str(), F_OK) == 0)
            return path;
    return {};
}

} // namespace

Platform* loadDesktop(std::string& whyNot)
{
    const std::string path = findModule();
    if (path.empty()) {
        whyNot =
            std::string("there is no ") + kModule + " beside the program, so no window; set WR_HEADLESS to run without";
        return nullptr;
    }
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        whyNot = "no window: " + lastError();
        return nullptr;
    }
    const auto make = reinterpret_cast<MakeDesktop*>(dlsym(module, kEntry));
    if (!make) {
        whyNot = "no window: " + lastError();
        return nullptr;
    }
    Platform* const desktop = make(whyNot);
    if (!desktop && whyNot.empty())
        whyNot = "no window: the desktop module has nothing to show it on";
    return desktop;
}

} // namespace MacToolbox
