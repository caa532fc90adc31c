#pragma once

#include "HostTool/HostError.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace Zel
{
class CZelImgDoc;
class CZelMultiDimImage;
} // namespace Zel

namespace HostTool
{

/// Runs work on the reader's own objects. Throws CHostError in the place of what the library throws.
void DoOnReader(const std::filesystem::path& document, const std::string& what, const std::function<void()>& work);

/// A document opened by the reader's own library, for what the exported functions can't tell: where things lie in the
/// files, and what is missing.
class CReaderDocument
{
public:
    /// Throws CHostError if the document can't be read.
    explicit CReaderDocument(const std::filesystem::path& path);
    ~CReaderDocument();
    CReaderDocument(const CReaderDocument&) = delete;
    CReaderDocument& operator=(const CReaderDocument&) = delete;

    const std::filesystem::path& Path() const { return _Path; }
    Zel::CZelImgDoc& Document() const { return *_Document; }
    /// The images in the order of the groups' numbers. Throws CHostError, also where a tile store is missing.
    std::vector<Zel::CZelMultiDimImage*> Images() const;
    /// Runs work on the library's objects. Throws CHostError in the place of what the library throws.
    void Do(const std::string& what, const std::function<void()>& work) const;

private:
    std::filesystem::path _Path;
    std::unique_ptr<Zel::CZelImgDoc> _Document;
};

} // namespace HostTool
