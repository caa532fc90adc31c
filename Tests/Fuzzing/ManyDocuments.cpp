#include "Tests/Fuzzing/ManyDocuments.h"

#include "Fuzzing/Mutators/Mutate.h"
#include "Fuzzing/Mutators/TagTrees.h"
#include "Fuzzing/Support/GuardedChild.h"

using namespace Fuzzing;

namespace
{

constexpr unsigned NumOfChangedTrees = 5;

void CutInHalf(const std::filesystem::path& file)
{
    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
}

} // namespace

CManyDocuments::CManyDocuments(std::function<void(const std::wstring& name)> open) : _open(std::move(open))
{
    for (CSampleSlide& slide : SampleSlides())
    {
        _names.push_back(slide.Made.WriteTo(_folder.Path() / (slide.Name + ".zel")).wstring());
        AddDamaged(slide.Name, slide.Made);
    }
}

void CManyDocuments::AddDamaged(const std::string& kind, SampleDocuments::Document& document)
{
    for (unsigned seed = 0; seed < NumOfChangedTrees; ++seed)
        KeepIfItAnswers(WithChangedTree(kind + std::to_string(seed) + ".zel", document, seed));
    KeepIfItAnswers(CutShort(kind + "-short.zel", document));
    KeepIfItAnswers(WithStoresCutShort(kind + "-stores.zel", document));
}

void CManyDocuments::KeepIfItAnswers(const std::filesystem::path& file)
{
    if (RunGuarded([&] { _open(file.wstring()); }, {.SecondsOfProcessor = 60}).How == HowItEnded::WithAnswers)
        _names.push_back(file.wstring());
}

std::filesystem::path CManyDocuments::WithChangedTree(const std::string& name, SampleDocuments::Document& document,
                                                      unsigned seed)
{
    const std::filesystem::path file = document.WriteTo(_folder.Path() / name);
    CBytes bytes = document.ToBytes();
    const auto leaveAsItIs = [](uint8_t*, size_t size, size_t) { return size; };
    const CFormat format{.Places = PlacesOfTagTrees, .Edit = EditTree};
    bytes.resize(Mutate(bytes.data(), bytes.size(), bytes.size(), seed, format, leaveAsItIs));
    _folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return file;
}

std::filesystem::path CManyDocuments::CutShort(const std::string& name, SampleDocuments::Document& document)
{
    std::filesystem::path file = document.WriteTo(_folder.Path() / name);
    CutInHalf(file);
    return file;
}

std::filesystem::path CManyDocuments::WithStoresCutShort(const std::string& name, SampleDocuments::Document& document)
{
    std::filesystem::path file = document.WriteTo(_folder.Path() / name);
    const std::filesystem::path stores = _folder.Path() / ("_" + file.stem().string() + "_");
    if (std::filesystem::exists(stores))
        for (const auto& entry : std::filesystem::recursive_directory_iterator(stores))
            if (entry.is_regular_file())
                CutInHalf(entry.path());
    return file;
}
