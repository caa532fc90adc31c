#pragma once
#include "Brix/AccessorInterface.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace Benchmarks
{

/// A document that a host has opened; a failing call ends the program with a line that names it.
class COpenDocument
{
public:
    explicit COpenDocument(const std::filesystem::path& path);
    ~COpenDocument();
    COpenDocument(const COpenDocument&) = delete;
    COpenDocument& operator=(const COpenDocument&) = delete;

    uint32_t NumOfGroups() const;
    AC_HGROUP Group(uint32_t number = 0) const;
    /// An area of level 0 of a group.
    static AC_HAREA Area(AC_HGROUP group, uint32_t number);
    /// The image of the first channel of an area.
    static AC_HIMAGE Image(AC_HAREA area, AC_AXIS_INFO* axes = nullptr, int numOfAxes = 0);
    /// Of the first group: the image of an area.
    AC_HIMAGE Tile(uint32_t area) const { return Image(Area(_firstGroup, area)); }
    /// Of the first group: the image of its first area at a time.
    AC_HIMAGE AtTime(uint32_t time) const;
    /// Fills the buffer, whose size is that of the image's bytes.
    static void ReadBody(AC_HIMAGE image, std::vector<BYTE>& buffer);

private:
    AC_HFILE _document = nullptr;
    AC_HGROUP _firstGroup = nullptr;
};

} // namespace Benchmarks
