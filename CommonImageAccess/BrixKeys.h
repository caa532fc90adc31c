#pragma once

namespace CIA
{

// The host's vocabulary: the keys of its property sets and group custom data, to the letter.

// Of a group.
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ChannelIdList = L"EnabledChannelIdList";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ImageChannelIdList = L"ImageChannelIdList";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ChannelInfo = L"ChannelInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ZtlDimExistence = L"Axes";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_AxisInfo = L"AxisInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ObjectiveLensInfo = L"ObjectiveLensInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_XYStagePosition = L"XYStagePosition";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_AnalysisROIList = L"AnalysisROIList";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ImagingROIList = L"ImagingROIList";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_ImagingROIInfo = L"ImagingROIInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_GroupName = L"GroupName";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_CreationDateTime = L"CreationDateTime";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_UpdateDateTime = L"UpdateDateTime";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_WorkInfo = L"WorkInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_LUTInfo = L"LUTInfo";

// Of a document.
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_SystemInfo = L"SystemInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_UserCommentForImgDoc = L"UserComment";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_IdInfo = L"IdInfo";

// Of a level.
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_OpticalResolution = L"PixelLength";

// Of an area.
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_AnalysisROIInfo = L"AnalysisROIInfo";
constexpr const wchar_t* BRIX_GETAREAPROPERTY_KEY_DeepZoomTileSize = L"ImageSize";

// Of an image.
constexpr const wchar_t* BRIX_GETFRAMEPROPERTY_KEY_StimulationROIList = L"StimulationROIList";
constexpr const wchar_t* BRIX_GETFRAMEPROPERTY_KEY_StimulationROIInfo = L"StimulationROIInfo";
constexpr const wchar_t* BRIX_GETFRAMEPROPERTY_KEY_ZtlCoords = L"AxisPosition";
constexpr const wchar_t* BRIX_GETFRAMEPROPERTY_KEY_JpegTables = L"JpegTables";

// The names of axes and parameters within them.
constexpr const wchar_t* BRIX_AXIS_Z = L"ZSTACK";
constexpr const wchar_t* BRIX_AXIS_T = L"TIMELAPSE";
constexpr const wchar_t* BRIX_AXIS_L = L"LAMBDA";

// Custom data of a group.
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupType = L"ZEL_GroupType";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupOrder = L"ZEL_GroupOrder";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupRenderOperation = L"ZEL_GroupRenderOperation";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupTransparency = L"ZEL_GroupTransparency";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneUnit = L"ZEL_GroupPlaneUnit";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneYUnit = L"ZEL_GroupPlaneYUnit";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneOrigin = L"ZEL_GroupPlaneOrigin";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneScale = L"ZEL_GroupPlaneScale";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupPlaneSize = L"ZEL_GroupPlaneSize";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameOrigin = L"ZEL_GroupFrameOrigin";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameScale = L"ZEL_GroupFrameScale";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameUnit = L"ZEL_GroupFrameUnit";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameYUnit = L"ZEL_GroupFrameYUnit";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis0 = L"ZEL_GroupAxis0";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupFrameAxis1 = L"ZEL_GroupAxis1";
constexpr const wchar_t* BRIX_GROUPCUSTOMDATA_KEY_GroupExposureTime = L"ZEL_GroupExposureTime";

} // namespace CIA
