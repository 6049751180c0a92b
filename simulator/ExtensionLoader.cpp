#include "ExtensionLoader.h"

#include <dlfcn.h>

std::string ExtensionLoader::load(const std::filesystem::path& library)
{
    // RTLD_NODELETE keeps the code mapped even if someone closes it: hooks
    // point into it for the rest of the process.
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_GLOBAL | RTLD_NODELETE);
    if (!handle) {
        const char* reason = dlerror();
        return std::string("cannot load the extension ") + library.string() + ": " + (reason ? reason : "unknown error");
    }
    return {};
}
