#pragma once
#include <cstdint>
#include <span>
#include <vector>

namespace CIA
{

/// Merges one JPEG strip of a TIFF directory into `output`, which holds the directory's JPEG tables without their
/// closing marker; what is missing for a complete JPEG stream is the closing marker alone. The first strip
/// (`stripID` 0) brings a marker that says which colours the components are, and the frame header, into which `height`
/// in pixels is written; later ones bring a restart marker. Of a segment's length only the low byte counts. True when
/// the strip's scan was found. A strip that does not begin with a marker, or is cut off within a segment that has to be
/// copied, is a failed assertion.
bool Apply_Huffman_On_JPEG(std::span<const unsigned char> strip, std::vector<unsigned char>& output, uint32_t stripID,
                           uint32_t height);

} // namespace CIA
