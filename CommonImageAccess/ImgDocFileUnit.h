#pragma once
#include "CommonUtil/BinaryFileReader.h"

#include <string>
#include <vector>

namespace CIA
{

class CImgDoc;

/// A binary file that is part of a document, the document itself included: it has a number, an expected extension, and
/// is read in a second step, since the reads are virtual operations.
class CImgDocFileUnit : public CommonUtil::CBinaryFileReader
{
public:
    /// `parent` is null for a document itself. A file that cannot be opened, has no "." in its name (EINVAL) or another
    /// extension (EINVAL, and a line for the error log) is told by errno. An ID or a file name that the parent has
    /// already is a failed assertion.
    CImgDocFileUnit(const std::wstring& fileName, uint32_t ID, const std::vector<std::wstring>& expectedExtensions,
                    bool isFileBigEndian, bool strictMode, CImgDoc* parent);

    uint32_t ID() const { return _ID; }
    /// False when the host asked to read on where a value cannot be read.
    bool StrictMode() const { return _StrictMode; }
    /// Asserts that there is one: the document has none.
    CImgDoc& ParentImgDoc() const;

protected:
    /// Reads header and metadata; to be called last by the most derived constructor. Asserts that errno is 0 before,
    /// and that a failed read has set it: then it stays in errno.
    void ContinueCtor();
    virtual bool ReadFileHeader() = 0;
    virtual bool ReadFileMetaData() = 0;

private:
    const bool _StrictMode;
    CImgDoc* const _ParentImgDoc;
    const uint32_t _ID;
};

} // namespace CIA
