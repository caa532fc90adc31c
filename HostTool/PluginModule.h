#pragma once

#include <cerrno>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace HostTool
{

/// A shared object that is loaded for as long as this lives.
class CPluginModule
{
public:
    /// Throws CHostError if it can't be loaded.
    explicit CPluginModule(const std::filesystem::path& path);
    /// Functions of this program, by their names.
    explicit CPluginModule(std::map<std::string, void*> functions) : _Functions(std::move(functions)) {}

    /// The address of an exported function. Throws CHostError if there is none of that name.
    void* Symbol(const char* name) const;

private:
    struct CUnloader
    {
        void operator()(void* module) const;
    };
    std::filesystem::path _Path;
    std::unique_ptr<void, CUnloader> _Module; ///< null: there are the functions below
    std::map<std::string, void*> _Functions;
};

template <typename Signature>
class CPluginFunction;

/// One exported function, found by its name and called by the signature that the interface's header declares.
template <typename Result, typename... Arguments>
class CPluginFunction<Result(Arguments...)>
{
public:
    CPluginFunction(const CPluginModule& module, const char* name)
        : _Function(reinterpret_cast<Result (*)(Arguments...)>(module.Symbol(name)))
    {
    }
    /// Clears errno first, so that it tells of this call if it fails.
    Result operator()(Arguments... arguments) const
    {
        errno = 0;
        return _Function(arguments...);
    }
    Result (*Address() const)(Arguments...) { return _Function; }

private:
    Result (*_Function)(Arguments...);
};

} // namespace HostTool
