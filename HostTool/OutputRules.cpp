#include "HostTool/OutputRules.h"

#include "HostTool/HostError.h"

#include <set>

namespace HostTool
{

namespace
{

namespace fs = std::filesystem;

/// A file by what it is, not by what it is called.
using FileIdentity = std::pair<dev_t, ino_t>;

struct CRules
{
    IfExists WhatIfExists = IfExists::Replace;
    std::set<FileIdentity> Files;
    std::set<FileIdentity> Folders;
};

CRules Rules;

FileIdentity IdentityOf(const struct stat& facts)
{
    return {facts.st_dev, facts.st_ino};
}

/// Notes a folder with all that is in it, links followed. A folder that is met again, as links may lead back, is done.
void ProtectFolder(const fs::path& folder)
{
    struct stat facts = {};
    if (stat(folder.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode) || !Rules.Folders.insert(IdentityOf(facts)).second)
        return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        ProtectFolder(entry->path());
        OutputRules::ProtectFile(entry->path());
    }
}

} // namespace

void OutputRules::Set(IfExists what)
{
    Rules.WhatIfExists = what;
}

IfExists OutputRules::WhatIfExists()
{
    return Rules.WhatIfExists;
}

void OutputRules::ProtectFile(const fs::path& file)
{
    struct stat facts = {};
    if (stat(file.c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode))
        Rules.Files.insert(IdentityOf(facts));
}

void OutputRules::ProtectDocuments(const std::vector<fs::path>& documents)
{
    for (const fs::path& document : documents)
    {
        ProtectFile(document);
        ProtectFolder(SideFolderOf(document));
        std::error_code error;
        if (const fs::path real = fs::canonical(document, error); !error)
            ProtectFolder(SideFolderOf(real));
    }
}

void OutputRules::RequireNotRead(const fs::path& output, const struct stat& facts)
{
    if (Rules.Files.contains(IdentityOf(facts)))
        throw CHostError(ExitCode::WrongUsage,
                         output.string() + ": is a file that is being read, which an output would destroy; choose "
                                           "another name");
}

void OutputRules::RequireOutsideOfDocuments(const fs::path& output, const fs::path& folder)
{
    struct stat facts = {};
    if (stat(folder.c_str(), &facts) == 0 && Rules.Folders.contains(IdentityOf(facts)))
        throw CHostError(ExitCode::WrongUsage, output.string() + ": lies in the folder of a document that is being "
                                                                 "read, of which it would be a part; choose another "
                                                                 "folder");
}

} // namespace HostTool
