#pragma once
#include "Brix/AccessorConveniences.h"
#include "Brix/AccessorInterface.h"
#include "SampleDocuments/Document.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>

// So that a failed test shows names and numbers.
void PrintTo(AC_Result result, std::ostream* stream);
void PrintTo(const CMN_RECT& rect, std::ostream* stream);
void PrintTo(const AC_AXIS_INFO& axis, std::ostream* stream);
inline bool operator==(const CMN_RECT& left, const CMN_RECT& right)
{
    return left.x == right.x && left.y == right.y && left.width == right.width && left.height == right.height;
}
inline bool operator==(const AC_AXIS_INFO& left, const AC_AXIS_INFO& right)
{
    return left.nType == right.nType && left.nNumber == right.nNumber;
}

/// Documents as a host sees them. The verbs below call the exported functions and throw when one fails, which fails the
/// test; a test that is about a result calls the function itself, through Call.
namespace SlideOfTest
{

using namespace SampleDocuments;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using TestSupport::LogOf;

/// Calls an exported function with a clean errno, which no function cleans itself.
template <typename Function, typename... Arguments>
auto Call(Function function, Arguments... arguments)
{
    errno = 0;
    return function(arguments...);
}

/// The name of a result, as the interface has it.
std::string NameOf(AC_Result result);

/// The messages that `function` logs, without the place that stands before each of them.
std::vector<std::string> MessagesOf(const std::function<void()>& function);

inline AC_AXIS_INFO AtZ(int64_t number)
{
    return {AC_AT_Z, number};
}
inline AC_AXIS_INFO AtT(int64_t number)
{
    return {AC_AT_TIME, number};
}
inline AC_AXIS_INFO AtL(int64_t number)
{
    return {AC_AT_LAMBDA, number};
}

using Axes = std::vector<AC_AXIS_INFO>;
using Names = std::vector<const wchar_t*>; ///< of channels

// What a document answers.
int NumOfGroups(AC_HFILE doc);
AC_HGROUP GroupOf(AC_HFILE doc, int number);
int NumOfLevels(AC_HGROUP group);
CMN_RECT LevelRect(AC_HGROUP group, int level);
int NumOfAreas(AC_HGROUP group, int level);
AC_HAREA Area(AC_HGROUP group, int level, UINT64 number);
CMN_RECT PositionOf(AC_HAREA area);
AC_HIMAGE Image(AC_HAREA area, const wchar_t* channel = L"0", Axes axes = {}); ///< NULL: no tile there
CMN_RECT RectOf(AC_HIMAGE image);
Axes AxesOf(AC_HIMAGE image);
std::wstring ChannelOf(AC_HIMAGE image);
ByteString BodyOf(AC_HIMAGE image, CMN_RECT part = {});

// The results of requests that may fail.
AC_Result ResultOfImage(AC_HAREA area, const wchar_t* channel, Axes axes = {});
AC_Result ResultOfNextImage(AC_HAREA area, Names channels, Axes axes = {});
AC_Result ResultOfBody(AC_HIMAGE image, CMN_RECT part = {});

/// All that a document of these stacks, which stand in the order of their IDs, answers, as text: every number and every
/// byte of a full walk.
std::string AnswersOf(AC_HFILE doc, const std::vector<Stack>& stacks);

/// The next image of an area; NULL at the end of the walk.
AC_HIMAGE NextImage(AC_HAREA area, Names channels = {L"0"}, Axes axes = {});

/// A document on disk, and opened. One at a time: opening another one closes the first.
class Slide : public testing::Test
{
protected:
    ~Slide() override { Close(); }

    /// Writes the document as "slide.zel" in an empty folder and opens it.
    void Open(Document document, int mode = AC_OM_READ);
    void Open(const Stack& stack) { Open(Document().With(stack)); }
    /// The same, for a document that may fail.
    AC_Result ResultOfOpening(Document document, int mode = AC_OM_READ);
    AC_Result ResultOfOpening(const Stack& stack) { return ResultOfOpening(Document().With(stack)); }
    /// Opens a file that is there already.
    AC_Result ResultOfOpeningFile(const std::wstring& name, int mode = AC_OM_READ);
    /// What is logged while the document is opened, which may fail.
    std::vector<std::string> MessagesOfOpening(Document document);
    std::vector<std::string> MessagesOfOpening(const Stack& stack) { return MessagesOfOpening(Document().With(stack)); }
    void Close();

    AC_HFILE Doc() const { return _doc; } ///< NULL after a failure
    AC_HGROUP Group(int number = 0) const { return GroupOf(_doc, number); }
    /// A tile of the first group.
    AC_HIMAGE Tile(int level, UINT64 area, const wchar_t* channel = L"0", Axes axes = {}) const
    {
        return Image(Area(Group(), level, area), channel, std::move(axes));
    }

    const TestSupport::TemporaryFolder& Folder() const { return *_folder; }
    std::wstring FileName() const { return _folder->WideName("slide.zel"); }
    std::filesystem::path StoreFile(uint32_t stackId) const;

private:
    std::unique_ptr<TestSupport::TemporaryFolder> _folder = std::make_unique<TestSupport::TemporaryFolder>();
    AC_HFILE _doc = nullptr;
};

/// A row of a table of tests; its name is that of the test.
struct Row
{
    std::string Name;
};
inline std::ostream& operator<<(std::ostream& stream, const Row& row)
{
    return stream << row.Name;
}
struct NameOfRow
{
    template <typename Info>
    std::string operator()(const Info& info) const
    {
        return info.param.Name;
    }
};

} // namespace SlideOfTest

/// The statement ends the process as the program does with what it cannot survive. `log` is a regular expression that
/// is printed before.
#define EXPECT_ENDS_THE_PROCESS(statement, log)                                                                        \
    EXPECT_EXIT(                                                                                                       \
        {                                                                                                              \
            TestSupport::PrintLogOntoStandardError();                                                                  \
            statement;                                                                                                 \
        },                                                                                                             \
        testing::KilledBySignal(SIGABRT), log)

#define ABORT_WAS_CALLED "abort\\(\\) called\\."
