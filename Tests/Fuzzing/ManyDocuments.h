#pragma once
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/Support/TemporaryFolder.h"

#include <functional>
#include <string>
#include <vector>

/// Good documents of each kind, and damaged ones that do not end the process: those whose tag tree was changed, and
/// those of which a file was cut short.
class CManyDocuments
{
public:
    /// `open` is how the documents are to be used: a damaged one that ends a child process by that is left out.
    explicit CManyDocuments(std::function<void(const std::wstring& name)> open);

    const std::vector<std::wstring>& Names() const { return _names; }

private:
    void AddDamaged(const std::string& kind, SampleDocuments::Document& document);
    void KeepIfItAnswers(const std::filesystem::path& file);
    std::filesystem::path WithChangedTree(const std::string& name, SampleDocuments::Document& document, unsigned seed);
    std::filesystem::path CutShort(const std::string& name, SampleDocuments::Document& document);
    std::filesystem::path WithStoresCutShort(const std::string& name, SampleDocuments::Document& document);

    std::function<void(const std::wstring& name)> _open;
    TestSupport::TemporaryFolder _folder;
    std::vector<std::wstring> _names;
};
