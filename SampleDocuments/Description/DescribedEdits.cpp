#include "SampleDocuments/Description/Parts.h"

namespace SampleDocuments
{

namespace
{

/// A way down the tree: tags, or [tag, n] for the nth child, from 0, that bears it.
Path PathFromJson(const Json& json, const std::string& place)
{
    if (!json.is_array())
        Refuse(place, "takes a list of tags, and of [tag, n] for the nth that bears it");
    Path path;
    for (size_t i = 0; i < json.size(); ++i)
    {
        std::pair<uint32_t, size_t> step = {0, 0};
        if (json[i].is_array())
            FromJson(json[i], ItemOf(place, i), step);
        else
            FromJson(json[i], ItemOf(place, i), step.first);
        path.push_back(Nth(step.first, step.second));
    }
    return path;
}

/// Takes a member, if it is there, through a call of the node.
template <typename T>
void Apply(CJsonObject& object, const char* key, CNode& node, CNode& (CNode::*call)(T))
{
    T value{};
    if (object.Read(key, value))
        (node.*call)(std::move(value));
}

/// What a field is, and what its header tells against the truth.
void ReadField(CJsonObject& object, CNode& node)
{
    Apply<uint32_t>(object, "tag", node, &CNode::Tag);
    Apply<uint32_t>(object, "code", node, &CNode::Code);
    Apply<ByteString>(object, "value", node, &CNode::Value);
    Apply<size_t>(object, "length", node, &CNode::Length);
    Apply<bool>(object, "inline", node, &CNode::Inline);
    Apply<bool>(object, "array", node, &CNode::MarkedAsArray);
    Apply<bool>(object, "extended", node, &CNode::Extended);
    Apply<uint32_t>(object, "blobSize", node, &CNode::BlobSize);
    Apply<uint32_t>(object, "flags", node, &CNode::Flags);
    Apply<uint32_t>(object, "extraFlags", node, &CNode::ExtraFlags);
    Apply<uint32_t>(object, "next", node, &CNode::Next);
    Apply<uint32_t>(object, "dataSize", node, &CNode::DataSize);
    Apply<uint32_t>(object, "junkBefore", node, &CNode::JunkBefore);
    std::optional<uint32_t> secondTag;
    if (object.Read("secondTag", secondTag))
        secondTag ? node.SecondTag(*secondTag) : node.NoSecondTag();
}

void ReadVolumeHeader(CJsonObject& object, CNode& node)
{
    Apply<uint16_t>(object, "ownSize", node, &CNode::OwnSize);
    Apply<uint16_t>(object, "fixedNum", node, &CNode::FixedNum);
    Apply<uint32_t>(object, "version", node, &CNode::Version);
    Apply<uint64_t>(object, "offsetOfFirstChild", node, &CNode::OffsetOfFirstChild);
    Apply<uint32_t>(object, "count", node, &CNode::Count);
    Apply<uint32_t>(object, "countFlags", node, &CNode::CountFlags);
    Apply<uint32_t>(object, "reserved", node, &CNode::Reserved);
}

/// A new field: {"tag": ..., "code": ..., "value": "hex"}, or a volume with {"tag": ..., "children": [...]}.
CNode NodeFromJson(const Json& json, const std::string& place)
{
    CNode node;
    ReadJsonObject(json, place,
                   [&node](CJsonObject& object)
                   {
                       const Json* children = object.Find("children");
                       node = children ? Volume(0) : Field(0, FieldCode::Int);
                       if (children && !children->is_array())
                           Refuse(object.PlaceOf("children"), "takes a list");
                       for (size_t i = 0; children && i < children->size(); ++i)
                           node.Add(NodeFromJson((*children)[i], ItemOf(object.PlaceOf("children"), i)));
                       if (!object.Has("tag"))
                           Refuse(object.PlaceOf("tag"), "is needed");
                       ReadField(object, node);
                       ReadVolumeHeader(object, node);
                   });
    return node;
}

void ReadChildren(CJsonObject& object, CNode& node)
{
    std::vector<uint32_t> dropped;
    object.Read("drop", dropped);
    for (const uint32_t tag : dropped)
        node.Drop(tag);
    if (const Json* added = object.Find("add"))
        node.Add(NodeFromJson(*added, object.PlaceOf("add")));
    if (const Json* put = object.Find("put"))
        node.Put(NodeFromJson(*put, object.PlaceOf("put")));
}

} // namespace

void ApplyEdits(const Json& json, const std::string& place, Document& document)
{
    if (!json.is_array())
        Refuse(place, "takes a list");
    for (size_t i = 0; i < json.size(); ++i)
        ReadJsonObject(json[i], ItemOf(place, i),
                       [&document](CJsonObject& object)
                       {
                           const Json* at = object.Find("at");
                           if (!at)
                               Refuse(object.PlaceOf("at"), "is needed");
                           const Path path = PathFromJson(*at, object.PlaceOf("at"));
                           CNode& node = document.Volume(path);
                           ReadField(object, node);
                           ReadVolumeHeader(object, node);
                           ReadChildren(object, node);
                       });
}

} // namespace SampleDocuments
