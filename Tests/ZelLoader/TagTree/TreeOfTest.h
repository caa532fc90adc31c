#pragma once
#include "SampleDocuments/DocumentFile.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace TreeOfTest
{

using namespace SampleDocuments;
using testing::HasSubstr;
using testing::Not;

constexpr uint64_t OffsetOfRoot = 8;

enum class Mode
{
    Lax,
    Strict
};

/// A document that was written to a file and opened; its tree was not read yet.
class COpenDocument
{
public:
    explicit COpenDocument(const CDocumentFile& document, Mode mode = Mode::Lax)
        : COpenDocument(document.ToBytes(), mode)
    {
        const std::vector<uint32_t> directories = document.OffsetsOfDirectories();
        Reader.SetOffsetOfFirstIfd(document.OffsetOfFirstIfd.value_or(directories.empty() ? 0 : directories.front()));
    }
    explicit COpenDocument(const ByteString& bytes, Mode mode = Mode::Lax)
        : _folder(), Name(_folder.Write("tree.zel", {reinterpret_cast<const char*>(bytes.data()), bytes.size()})),
          File(_folder.WideName("tree.zel"), false), Reader(File, mode == Mode::Strict)
    {
        errno = 0;
    }

    std::unique_ptr<Zel::CZelDataFieldForVolume> ReadRoot()
    {
        return Reader.ReadVolume(0, OffsetOfRoot, Zel::SecondTagAbsent);
    }

private:
    TestSupport::TemporaryFolder _folder;

public:
    std::string Name; ///< of the file
    CommonUtil::CBinaryFileReader File;
    Zel::CZelTagTreeReader Reader;
};

inline CDocumentFile DocumentOf(CNode root)
{
    CDocumentFile document;
    document.Root = std::move(root);
    return document;
}

/// A tree that was read out of a file, and what the log says about it.
class CTree : public COpenDocument
{
public:
    explicit CTree(const CDocumentFile& document, Mode mode = Mode::Lax) : COpenDocument(document, mode)
    {
        Log = TestSupport::LogOf([this] { Root = ReadRoot(); });
    }
    explicit CTree(CNode root, Mode mode = Mode::Lax) : CTree(DocumentOf(std::move(root)), mode) {}

    /// The number of children of the root.
    size_t NumOfChildren() const { return Root->Children().size(); }
    /// The nth child of the root, of the class that it must have.
    template <typename Node>
    Node& Child(size_t n = 0)
    {
        return dynamic_cast<Node&>(*Root->Children().at(n));
    }
    Zel::CZelDataFieldForVolume& VolumeChild(size_t n = 0) { return Child<Zel::CZelDataFieldForVolume>(n); }
    CommonUtil::CDataWithType& ValueOfChild(size_t n = 0)
    {
        return Child<Zel::CZelDataFieldForSimpleTypes>(n).DataWithType();
    }

    std::unique_ptr<Zel::CZelDataFieldForVolume> Root; ///< null when it was given up
    std::string Log;
};

/// The failed assertion in which the reading of a tree ends; empty when it is read.
inline std::string AssertionOfReading(const CDocumentFile& document)
{
    COpenDocument open(document);
    return TestSupport::AssertionOf([&] { open.ReadRoot(); });
}
inline std::string AssertionOfReading(CNode root)
{
    return AssertionOfReading(DocumentOf(std::move(root)));
}

#define EXPECT_READING_FAILS(root) EXPECT_THAT(AssertionOfReading(root), HasSubstr("Assertion failed: file "))
#define EXPECT_READING_WORKS(root) EXPECT_EQ(AssertionOfReading(root), "")

/// The tags of a volume's children.
inline std::vector<uint32_t> TagsOf(const Zel::CZelDataFieldForVolume& volume)
{
    std::vector<uint32_t> tags;
    for (const auto& child : volume.Children())
        tags.push_back(child->Tag());
    return tags;
}

/// The messages of a log, without what stands before each of them.
inline std::vector<std::string> MessagesOf(const std::string& log)
{
    std::vector<std::string> messages;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);)
    {
        const size_t endOfLineNumber = line.find(':');
        const size_t endOfFunction = line.find(": ", endOfLineNumber + 1);
        messages.push_back(line.substr(endOfFunction + 2));
    }
    return messages;
}

} // namespace TreeOfTest
