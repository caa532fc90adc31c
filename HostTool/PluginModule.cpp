#include "HostTool/PluginModule.h"

#include "HostTool/HostError.h"

#include <dlfcn.h>

namespace HostTool
{

CPluginModule::CPluginModule(const std::filesystem::path& path)
    : _Path(path), _Module(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (!_Module)
        throw CHostError(ExitCode::WrongUsage,
                         "cannot load the plug-in: " + std::string(dlerror()) + "; build it, or name it by --plugin");
}

void* CPluginModule::Symbol(const char* name) const
{
    const auto known = _Functions.find(name);
    void* symbol = known != _Functions.end() ? known->second : dlsym(_Module.get(), name);
    if (!symbol)
        throw CHostError(
            ExitCode::WrongUsage,
            _Path.string() + ": no function " + name +
                "; this is another plug-in, or an older one; build it anew, or name another one by --plugin");
    return symbol;
}

void CPluginModule::CUnloader::operator()(void* module) const
{
    dlclose(module);
}

} // namespace HostTool
