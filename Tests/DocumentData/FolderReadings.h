#pragma once

namespace SlideOfTest
{

/// How often a folder was read by this program, whoever asked.
unsigned NumOfFolderReadings();

} // namespace SlideOfTest
