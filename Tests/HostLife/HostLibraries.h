#pragma once
#include <string>

// A host's own use of two libraries that the plug-in uses as well.

/// libtiff with handlers of the host's own, until the end of the object.
class CHostTiff
{
public:
    CHostTiff();
    ~CHostTiff();
    CHostTiff(const CHostTiff&) = delete;
    CHostTiff& operator=(const CHostTiff&) = delete;

    /// Whether the handlers, and the hook for tags, are still those of the host.
    bool IsAsItWasSet() const;
    /// Messages that the host's handlers got.
    int NumOfMessages() const;
    /// Writes a picture into the folder, reads it back, and tries a file that is none; true when all went as it should
    /// and the host was told once what is wrong with that file.
    bool Works(const std::string& folder) const;
};

namespace HostXerces
{

void Start();
void End();
/// Whether anybody has started the library and not ended it.
bool IsStarted();
/// Parses a text; true when all went as it should. The library must have been started by the host.
bool Works();

} // namespace HostXerces
