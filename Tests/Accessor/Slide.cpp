#include "Tests/Accessor/Slide.h"

#include <array>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace SlideOfTest
{

namespace
{

constexpr std::array<const char*, NUM_OF_AC_RESULT_CODES> NamesOfResults = {"SUCCESS",
                                                                            "INVALID_PARAM",
                                                                            "FILE_NOT_FOUND",
                                                                            "PROPERTY_NOT_FOUND",
                                                                            "NO_SECTION",
                                                                            "NO_LUT",
                                                                            "UNSUPPORTED_OPERATION",
                                                                            "NO_FRAME",
                                                                            "FAILURE",
                                                                            "INVALID_FRAME",
                                                                            "INSUFFICIENT_BUFFER",
                                                                            "FRAME_NOT_ACQUIRED",
                                                                            "NO_MORE_FRAME",
                                                                            "INVALID_BLOCK_NUMBER",
                                                                            "FILE_VERSION_INVALID",
                                                                            "ERROR_IN_READ_DATA",
                                                                            "XALAN_TRANSFORMATION_FAILED",
                                                                            "DESERIALIZATION_FAILED",
                                                                            "DESERIALIZED_ELEMENT_LIST_EMPTY",
                                                                            "DESERIALIZED_ELEMENT_EMPTY",
                                                                            "DESERIALIZED_VALUE_LIST_EMPTY",
                                                                            "DESERIALIZED_VALUE_EMPTY",
                                                                            "INVALID_HANDLE_VALUE",
                                                                            "INVALID_AXIS_VALUE",
                                                                            "ALLOCATION_FAILED",
                                                                            "FILE_CORRUPT",
                                                                            "FUNCTION_RETURNED_NULL",
                                                                            "ILLEGAL_STATE",
                                                                            "INCOMPLETE_FILE",
                                                                            "DATA_NOT_SUPPORTED",
                                                                            "WRITE_OPEN_FAIL",
                                                                            "WRITE_FAILED",
                                                                            "MISSING_FILE",
                                                                            "UNSUPPORTED_COMPRESSION",
                                                                            "PROPERTY_NOT_FOUND_IN_DOM",
                                                                            "IN_USE"};

void Must(AC_Result result, const char* what)
{
    if (result != AC_RESULT_SUCCESS)
        throw std::runtime_error(std::string(what) + " answered " + NameOf(result));
}

} // namespace

std::string NameOf(AC_Result result)
{
    const auto number = static_cast<size_t>(result);
    return number < NamesOfResults.size() ? NamesOfResults[number] : "no result: " + std::to_string(result);
}

std::vector<std::string> MessagesOf(const std::function<void()>& function)
{
    std::vector<std::string> messages;
    std::istringstream lines(LogOf(function));
    for (std::string line; std::getline(lines, line);)
    {
        const size_t endOfLineNumber = line.find(':');
        const size_t endOfFunction = line.find(": ", endOfLineNumber + 1);
        messages.push_back(endOfFunction == std::string::npos ? line : line.substr(endOfFunction + 2));
    }
    return messages;
}

int NumOfGroups(AC_HFILE doc)
{
    INT32 count = -1;
    Must(Call(_AC_GetNumOfGroups, doc, &count), "GetNumOfGroups");
    return count;
}

AC_HGROUP GroupOf(AC_HFILE doc, int number)
{
    AC_HGROUP group = nullptr;
    Must(Call(_AC_GetGroup, doc, number, &group), "GetGroup");
    return group;
}

int NumOfLevels(AC_HGROUP group)
{
    int count = -1;
    Must(Call(_AC_GetNumOfLevels, group, &count), "GetNumOfLevels");
    return count;
}

CMN_RECT LevelRect(AC_HGROUP group, int level)
{
    CMN_RECT rect = {};
    Must(Call(_AC_GetLevelImageSize, group, level, &rect), "GetLevelImageSize");
    return rect;
}

int NumOfAreas(AC_HGROUP group, int level)
{
    INT32 count = -1;
    Must(Call(_AC_GetNumOfArea, group, level, &count), "GetNumOfArea");
    return count;
}

AC_HAREA Area(AC_HGROUP group, int level, UINT64 number)
{
    AC_HAREA area = nullptr;
    Must(Call(_AC_GetArea, group, level, number, &area), "GetArea");
    return area;
}

CMN_RECT PositionOf(AC_HAREA area)
{
    CMN_RECT rect = {};
    Must(Call(_AC_GetAreaPosition, area, &rect), "GetAreaPosition");
    return rect;
}

AC_HIMAGE Image(AC_HAREA area, const wchar_t* channel, Axes axes)
{
    AC_HIMAGE image = nullptr;
    Must(Call(_AC_GetImage, area, channel, axes.data(), static_cast<int>(axes.size()), &image), "GetImage");
    return image;
}

AC_Result ResultOfImage(AC_HAREA area, const wchar_t* channel, Axes axes)
{
    AC_HIMAGE image = nullptr;
    return Call(_AC_GetImage, area, channel, axes.data(), static_cast<int>(axes.size()), &image);
}

AC_Result ResultOfNextImage(AC_HAREA area, Names channels, Axes axes)
{
    AC_HIMAGE image = nullptr;
    return Call(_AC_GetNextImage, area, channels.data(), static_cast<int>(channels.size()), axes.data(),
                static_cast<int>(axes.size()), &image);
}

AC_HIMAGE NextImage(AC_HAREA area, Names channels, Axes axes)
{
    AC_HIMAGE image = nullptr;
    const AC_Result result = Call(_AC_GetNextImage, area, channels.data(), static_cast<int>(channels.size()),
                                  axes.data(), static_cast<int>(axes.size()), &image);
    if (result == AC_RESULT_NO_MORE_FRAME)
        return nullptr;
    Must(result, "GetNextImage");
    return image;
}

CMN_RECT RectOf(AC_HIMAGE image)
{
    CMN_RECT rect = {};
    Must(Call(_AC_GetImageSize, image, &rect), "GetImageSize");
    return rect;
}

Axes AxesOf(AC_HIMAGE image)
{
    int count = 0;
    Must(Call(_AC_GetImageAxis, image, nullptr, 0, &count), "GetImageAxis");
    Axes axes(static_cast<size_t>(count));
    Must(Call(_AC_GetImageAxis, image, axes.data(), count, &count), "GetImageAxis");
    return axes;
}

std::wstring ChannelOf(AC_HIMAGE image)
{
    int size = 0;
    Must(Call(_AC_GetImageChannelId, image, nullptr, 0, &size), "GetImageChannelId");
    std::wstring channel(static_cast<size_t>(size), L'?');
    Must(Call(_AC_GetImageChannelId, image, channel.data(), size, &size), "GetImageChannelId");
    channel.pop_back();
    return channel;
}

AC_Result ResultOfBody(AC_HIMAGE image, CMN_RECT part)
{
    UINT64 size = 0;
    const AC_Result result = Call(_AC_GetImageBody, image, &part, nullptr, UINT64{0}, &size);
    if (result != AC_RESULT_SUCCESS)
        return result;
    ByteString bytes(size);
    return Call(_AC_GetImageBody, image, &part, bytes.data(), size, &size);
}

ByteString BodyOf(AC_HIMAGE image, CMN_RECT part)
{
    UINT64 size = 0;
    Must(Call(_AC_GetImageBody, image, &part, nullptr, UINT64{0}, &size), "GetImageBody");
    ByteString bytes(size);
    Must(Call(_AC_GetImageBody, image, &part, bytes.data(), size, &size), "GetImageBody");
    bytes.resize(size);
    return bytes;
}

namespace
{

void Tell(std::ostream& answers, const CMN_RECT& rect)
{
    answers << rect.x << ' ' << rect.y << ' ' << rect.width << ' ' << rect.height << '\n';
}

void Tell(std::ostream& answers, AC_HIMAGE image)
{
    if (!image)
    {
        answers << "no image\n";
        return;
    }
    Tell(answers, RectOf(image));
    for (const AC_AXIS_INFO& axis : AxesOf(image))
        answers << axis.nType << '=' << axis.nNumber << ' ';
    const ByteString body = BodyOf(image);
    answers << testing::PrintToString(ChannelOf(image)) << ' ' << std::string(body.begin(), body.end()) << '\n';
}

} // namespace

std::string AnswersOf(AC_HFILE doc, const std::vector<Stack>& stacks)
{
    std::ostringstream answers;
    answers.imbue(std::locale::classic());
    for (int number = 0; number < NumOfGroups(doc); ++number)
    {
        const AC_HGROUP group = GroupOf(doc, number);
        for (int level = 0; level < NumOfLevels(group); ++level)
        {
            Tell(answers, LevelRect(group, level));
            const auto numOfAreas = static_cast<UINT64>(NumOfAreas(group, level));
            for (UINT64 areaNumber = 0; areaNumber < numOfAreas; ++areaNumber)
            {
                const AC_HAREA area = Area(group, level, areaNumber);
                Tell(answers, PositionOf(area));
                for (const CIndexes& at : stacks[static_cast<size_t>(number)].Frames())
                    Tell(answers, Image(area, std::to_wstring(at.C).c_str(), {AtZ(at.Z), AtT(at.T), AtL(at.L)}));
            }
        }
    }
    return answers.str();
}

void Slide::Open(Document document, int mode)
{
    Must(ResultOfOpening(std::move(document), mode), "Open");
}

AC_Result Slide::ResultOfOpening(Document document, int mode)
{
    Close();
    _folder = std::make_unique<TestSupport::TemporaryFolder>();
    document.WriteTo(_folder->Path() / "slide.zel");
    return ResultOfOpeningFile(FileName(), mode);
}

AC_Result Slide::ResultOfOpeningFile(const std::wstring& name, int mode)
{
    Close();
    return Call(_AC_Open, name.c_str(), mode, &_doc);
}

std::vector<std::string> Slide::MessagesOfOpening(Document document)
{
    return MessagesOf([&] { ResultOfOpening(std::move(document)); });
}

void Slide::Close()
{
    if (_doc)
        _AC_Close(_doc);
    _doc = nullptr;
}

std::filesystem::path Slide::StoreFile(uint32_t stackId) const
{
    return _folder->Path() / "_slide_" / ("stack" + std::to_string(stackId)) / "frame_t.kor";
}

} // namespace SlideOfTest

void PrintTo(AC_Result result, std::ostream* stream)
{
    *stream << SlideOfTest::NameOf(result);
}

void PrintTo(const CMN_RECT& rect, std::ostream* stream)
{
    *stream << "(" << rect.x << ", " << rect.y << ", " << rect.width << " x " << rect.height << ")";
}

void PrintTo(const AC_AXIS_INFO& axis, std::ostream* stream)
{
    const char* name = axis.nType == AC_AT_TIME ? "T" : axis.nType == AC_AT_Z ? "Z" : "L";
    *stream << name << axis.nNumber;
}
