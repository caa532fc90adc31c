#pragma once
#include "Tests/Support/TemporaryFolder.h"

#include <string>

namespace ThreadsOfTest
{

/// Files that platform calls are asked about: a profile, a text, a picture in TIFF. Several threads may ask at once.
class CPlatformFiles
{
public:
    CPlatformFiles();

    /// Asks each exported function that takes no document, and tells the answers, one a line. All but
    /// PAL_ReleaseDataCodec, beside which no codec may be asked for.
    std::string AskEverything() const;

private:
    TestSupport::TemporaryFolder _folder;
};

} // namespace ThreadsOfTest
