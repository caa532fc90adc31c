#pragma once

#include "SampleDocuments/Node.h"

#include <string>

namespace SampleDocuments
{

/// A channel of a display layer: how a stack is shown. What is not set is not written.
struct CDisplayChannel
{
    std::optional<int32_t> StackId = {};      ///< what it shows; that of the stack if it belongs to one
    std::optional<int32_t> OperatorType = {}; ///< -1 or 1: the channel is an operator and shows no stack
    std::optional<int32_t> OperatorId = {};   ///< how the stack is drawn over those below
    std::optional<double> Transparency = {};
    std::optional<std::string> PlaneUnit = {};
    std::optional<std::string> PlaneYUnit = {};
    std::optional<std::vector<double>> PlaneOrigin = {};
    std::optional<std::vector<double>> PlaneScale = {};
    std::optional<std::vector<int32_t>> PlaneRect = {}; ///< left, top, right, bottom
    std::optional<bool> Hidden = {};
};

/// The layers of a document, from the bottom, with the channels of each.
using DisplayLayers = std::vector<std::vector<CDisplayChannel>>;

/// The node of a display layer.
CNode DisplayLayerNode(uint32_t number, const std::vector<CDisplayChannel>& channels);

} // namespace SampleDocuments
