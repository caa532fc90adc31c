#include "Tests/FailingMachine/SlideOnAMachine.h"

#include "Fuzzing/Seeds/SampleSlides.h"

#include <algorithm>
#include <numeric>

using namespace Fuzzing;

SlideOnAMachine::SlideOnAMachine()
{
    SampleSlides().at(GetParam()).Made.WriteTo(Document());
    Open();
    Walk(); // what the next image is depends on the one before
    _answers = Walk();
    Close();
}

SlideOnAMachine::~SlideOnAMachine()
{
    Close();
}

std::vector<std::filesystem::path> SlideOnAMachine::Files() const
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder()))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

AC_Result SlideOnAMachine::Open()
{
    return _AC_Open(Document().wstring().c_str(), AC_OM_READ, &_document);
}

void SlideOnAMachine::Close()
{
    if (_document)
        _AC_Close(std::exchange(_document, nullptr));
}

void SlideOnAMachine::ExpectItToAnswerAsEver() const
{
    Walk();
    EXPECT_EQ(Walk(), _answers);
}

void SlideOnAMachine::ExpectItToOutlive(const std::function<void(const std::filesystem::path&)>& happens)
{
    ASSERT_EQ(Open(), AC_RESULT_SUCCESS);
    const TestSupport::TemporaryFolder copies;
    for (const std::filesystem::path& file : Files())
    {
        const std::filesystem::path copy = copies.Path() / "copy";
        std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing);
        happens(file);
        Walk();
        if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(file)))
            std::filesystem::remove(file);
        std::filesystem::copy_file(copy, file, std::filesystem::copy_options::overwrite_existing);
        ExpectItToAnswerAsEver();
    }
}

std::vector<size_t> NumbersOfSlides()
{
    std::vector<size_t> numbers(SampleSlides().size());
    std::iota(numbers.begin(), numbers.end(), size_t{0});
    return numbers;
}

std::string NameOfSlide(const testing::TestParamInfo<size_t>& info)
{
    std::string name = SampleSlides().at(info.param).Name;
    std::erase(name, '-');
    return name;
}
