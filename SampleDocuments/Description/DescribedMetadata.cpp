#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Description/Parts.h"

namespace SampleDocuments
{

namespace
{

void ReadGeometry(CJsonObject& object, CStackPlan& plan)
{
    object.Read("boundary", plan.Boundary);
    object.Read("shift", plan.Shift);
    object.Read("origin", plan.Origin);
    object.Read("scale", plan.Scale);
    object.Read("unit", plan.Unit);
    object.Read("yUnit", plan.YUnit);
    object.Read("axisMeanings", plan.AxisMeanings);
}

void ReadNames(CJsonObject& object, CStackPlan& plan)
{
    object.Read("name", plan.Name);
    std::optional<CJsonTime> time;
    if (object.Read("creationTime", time))
        plan.CreationTime = time ? std::optional(time->Seconds) : std::nullopt;
    object.Read("stackType", plan.StackType);
}

void ReadAcquisition(CJsonObject& object, CStackPlan& plan)
{
    CAcquisition acquisition;
    const Json* stage = object.Find("stage");
    if (stage)
        ReadJsonObject(*stage, object.PlaceOf("stage"),
                       [&acquisition](CJsonObject& position)
                       {
                           position.Read("x", acquisition.StageX);
                           position.Read("y", acquisition.StageY);
                       });
    bool isThere = stage != nullptr;
    isThere |= object.Read("experimentName", acquisition.ExperimentName);
    isThere |= object.Read("sampleName", acquisition.SampleName);
    isThere |= object.Read("sampleDescription", acquisition.SampleDescription);
    if (isThere)
        plan.Acquisition = std::move(acquisition);
}

void ReadColours(CJsonObject& object, CStackPlan& plan)
{
    if (object.Read("limits", plan.Limits))
        plan.HasLimits = plan.Limits.has_value();
    object.Read("stackLimits", plan.StackLimits);
    object.Read("lookUpTable", plan.Table);
    object.Read("display", plan.Display);
}

/// Calls read(object, index) for each object of a list, if it is there.
template <typename TRead>
void ReadList(CJsonObject& object, const std::string& key, TRead&& read)
{
    const Json* list = object.Find(key);
    if (!list)
        return;
    if (!list->is_array())
        Refuse(object.PlaceOf(key), "takes a list");
    for (size_t i = 0; i < list->size(); ++i)
        ReadJsonObject((*list)[i], ItemOf(object.PlaceOf(key), i), read);
}

void ReadFrames(CJsonObject& object, CStackPlan& plan)
{
    object.Read("framesSharedByChannels", plan.AreFramesSharedByChannels);
    object.Read("framePropertiesAlways", plan.HasFramePropertiesAlways);
    ReadList(object, "frames",
             [&plan](CJsonObject& entry)
             {
                 size_t frame = 0;
                 entry.Read("frame", frame);
                 ReadDevices(entry, plan.FrameExtras[frame].OpticalPath);
                 entry.Read("blobs", plan.FrameExtras[frame].Blobs);
             });
}

void ReadFrameCoordinates(CJsonObject& object, CStackPlan& plan)
{
    const Json* member = object.Find("frameCoordinates");
    if (!member)
        return;
    const auto read = [&plan](CJsonObject& dimensions, const char* key, DimensionMeaning::E meaning)
    {
        if (const Json* coordinates = dimensions.Find(key))
            ReadJsonObject(*coordinates, dimensions.PlaceOf(key),
                           [&](CJsonObject& entry)
                           {
                               entry.Read("values", plan.Coordinates[meaning].Values);
                               entry.Read("unit", plan.Coordinates[meaning].Unit);
                           });
    };
    ReadJsonObject(*member, object.PlaceOf("frameCoordinates"),
                   [&read](CJsonObject& dimensions)
                   {
                       read(dimensions, "z", DimensionMeaning::Z);
                       read(dimensions, "t", DimensionMeaning::T);
                       read(dimensions, "lambda", DimensionMeaning::Lambda);
                   });
}

void ReadBlobs(CJsonObject& object, CStackPlan& plan)
{
    object.Read("blobs", plan.LayerBlobs);
    ReadList(object, "channelBlobs",
             [&plan](CJsonObject& entry)
             {
                 uint32_t channel = 0;
                 entry.Read("channel", channel);
                 entry.Read("blobs", plan.ChannelBlobs[channel]);
             });
}

} // namespace

void ReadStackMetadata(CJsonObject& object, Stack& stack)
{
    CStackPlan& plan = stack.Plan();
    ReadNames(object, plan);
    ReadGeometry(object, plan);
    ReadColours(object, plan);
    ReadDevices(object, plan.OpticalPath);
    ReadAcquisition(object, plan);
    object.Read("counts", plan.Counts);
    ReadFrames(object, plan);
    ReadFrameCoordinates(object, plan);
    ReadBlobs(object, plan);
    object.Read("storeName", plan.StoreName);
    object.Read("isStoreWritten", plan.IsStoreWritten);
    object.Read("isChunkListFirst", plan.ChunkListBeforeBodies);
}

} // namespace SampleDocuments
