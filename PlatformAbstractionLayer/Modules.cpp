#include "PlatformAbstractionLayer/Modules.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "PlatformAbstractionLayer/SizedResult.h"

#include <cstdio>
#include <cwchar>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <link.h>
#include <sys/stat.h>

namespace
{

/// The target of the link to the program's own file.
std::string PathOfProgram()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

/// The full name of the file that is mapped at an address.
std::string PathOfMapping(const void* address)
{
    const auto place = reinterpret_cast<uintptr_t>(address);
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);)
    {
        uintptr_t start = 0;
        uintptr_t end = 0;
        if (std::sscanf(line.c_str(), "%lx-%lx", &start, &end) == 2 && place >= start && place < end)
            return line.find('/') == std::string::npos ? std::string() : line.substr(line.find('/'));
    }
    return {};
}

/// A library is a plain file. Anything else must not even be opened: the loader would wait at a pipe for ever.
bool IsNoPlainFile(const std::string& name)
{
    struct stat status = {};
    const bool isPath = name.find('/') != std::string::npos; // else the loader looks for it in its own folders
    return name.empty() || (isPath && stat(name.c_str(), &status) == 0 && !S_ISREG(status.st_mode));
}

void* FindCurrentModule()
{
    Dl_info info = {};
    link_map* module = nullptr;
    ZEL_ASSERT(dladdr1(reinterpret_cast<void*>(&PAL_GetCurrentModule), &info, reinterpret_cast<void**>(&module),
                       RTLD_DL_LINKMAP) != 0);
    // Linked into a program, the layer is part of the main module, which has no name to be loaded by.
    const bool isProgram = !module->l_name || *module->l_name == '\0';
    void* const handle = dlopen(isProgram ? nullptr : info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    ZEL_ASSERT(handle);
    ZEL_ASSERT(dlclose(handle) == 0); // only to have the handle: the count is back where it was
    return handle;
}

} // namespace

void* PAL_LoadLibrary(const wchar_t* name)
{
    if (!name)
        return nullptr;
    const std::string utf8 = Utf16ToUtf8(name);
    void* const module = IsNoPlainFile(utf8) ? nullptr : dlopen(utf8.c_str(), RTLD_LAZY);
    if (!module)
        ZEL_LOG("Error loading Library - %s", utf8.c_str());
    return module;
}

int PAL_ReleaseLibrary(void* module)
{
    return module ? dlclose(module) : PAL_RESULT_FAILURE;
}

void* PAL_GetProcAddress(void* module, const char* name)
{
    return module && name ? dlsym(module, name) : nullptr;
}

void* PAL_GetCurrentModule(void)
{
    static void* const HandleOfCurrentModule = FindCurrentModule();
    return HandleOfCurrentModule;
}

std::string PathOfModule(void* module)
{
    link_map* map = nullptr;
    if (!module)
        return PathOfProgram();
    if (dlinfo(module, RTLD_DI_LINKMAP, &map) != 0)
        return {};
    const std::string name = map->l_name ? map->l_name : "";
    if (name.empty())
        return PathOfProgram();
    // A name that is not absolute counts from where the process stood when it loaded the module.
    return name.starts_with('/') ? name : PathOfMapping(map->l_ld);
}

std::wstring DirOfCurrentModule()
{
    const std::string path = PathOfModule(PAL_GetCurrentModule());
    return Utf8ToUtf16(path.substr(0, path.rfind('/')));
}

uint32_t GetModuleFileNameW(void*, wchar_t* buffer, uint32_t size)
{
    const std::wstring path = Utf8ToUtf16(PathOfProgram());
    if (path.empty() || !buffer || path.size() >= size)
        return 0;
    std::wmemcpy(buffer, path.c_str(), path.size() + 1);
    return static_cast<uint32_t>(path.size());
}

int PAL_GetModulePath(void* hModule, wchar_t* pBuffer, uint32_t nBufferSize, uint32_t* sizeFilledOrNeeded)
{
    if ((pBuffer == nullptr) != (nBufferSize == 0))
    {
        ZEL_LOG("pBuffer and nBufferSize must either be non-NULL and non-zero respectively, or be NULL and zero "
                "respectively.");
        return PAL_RESULT_FAILURE;
    }
    const std::wstring path = Utf8ToUtf16(PathOfModule(hModule));
    if (path.empty())
        return PAL_RESULT_FAILURE;
    return FillOrTellSizeAlone(std::wstring_view(path.c_str(), path.size() + 1), pBuffer, nBufferSize,
                               sizeFilledOrNeeded);
}
