#pragma once
#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

/// A small document of each kind, whose answers are known, to which something happens.
class SlideOnAMachine : public testing::TestWithParam<size_t>
{
protected:
    SlideOnAMachine();
    ~SlideOnAMachine() override;

    const std::filesystem::path& Folder() const { return _folder.Path(); }
    std::filesystem::path Document() const { return _folder.Path() / "slide.zel"; }
    std::filesystem::path SideFolder() const { return _folder.Path() / "_slide_"; }
    /// The document and its stores.
    std::vector<std::filesystem::path> Files() const;

    AC_Result Open();
    void Close();
    /// Asks the open document for everything.
    Fuzzing::CWalkAnswers Walk() const { return Fuzzing::WalkOpenDocument(_document); }
    /// Requires that the document, which is open, answers as it does undisturbed.
    void ExpectItToAnswerAsEver() const;
    /// Opens the document, lets something happen to each of its files, asks for everything, makes that undone, and
    /// expects the document to answer as ever.
    void ExpectItToOutlive(const std::function<void(const std::filesystem::path&)>& happens);

private:
    TestSupport::TemporaryFolder _folder;
    AC_HFILE _document = nullptr;
    Fuzzing::CWalkAnswers _answers;
};

/// For each kind of document, by its name.
std::vector<size_t> NumbersOfSlides();
std::string NameOfSlide(const testing::TestParamInfo<size_t>& info);
