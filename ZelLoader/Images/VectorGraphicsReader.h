#pragma once
#include "CommonImageAccess/VectorGraphicsImage.h"
#include "ZelLoader/Catalogue/ZELFormat.h"
#include "ZelLoader/Images/ShapeGeometry.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

struct CShapeClass;

/// Reads what users have drawn out of measurement blobs, which hold it as XML or as tag trees.
class CVectorGraphicsReader
{
public:
    /// Objects are appended to `images`, each with its place in the list as its ID. All must outlive this.
    CVectorGraphicsReader(CBinaryFileReader& document, CZelTagTreeReader& tagTree,
                          std::vector<CVectorGraphicsImage>& images)
        : _Document(document), _TagTree(tagTree), _Images(images)
    {
    }

    /// Reads one blob; one that holds no measurements is passed over. False when its contents cannot be parsed. What
    /// breaks a rule of the format is a failed assertion; a version that nobody can read ends the process.
    bool VectorGraphicsImages_initFromBlob(CZelDataField& node);

private:
    /// An object of the XML form as far as it has been read.
    struct CXmlRoi
    {
        std::wstring Name;
        std::string ShapeClass;
        const CShapeClass* Class = nullptr; ///< null for a measurement that is no region
        CShapePoints Points;
        bool HasObjectType = false;
    };

    bool ReadXmlBlob(const CZelDataFieldForBlob& blob);
    void ParseXmlOfRoiBlobV4(const pugi::xml_node& root);
    void ReadEachXmlRoi(const pugi::xml_node& objectListNode);
    void ReadXmlRoiProperty(const pugi::xml_node& node, CXmlRoi& roi);
    void ReadRoiTypeAndShape(CXmlRoi& roi);

    bool VectorGraphicsImages_initFromBlobWithZelTags(CZelDataFieldForBlobWithZelTags& blobWithTags);
    void ReadTagRoi(CZelImgDocMetaData& metaData);

    void AddImage(std::wstring name, const CShapeClass& shapeClass, const CShapePoints& points);

    CBinaryFileReader& _Document;
    CZelTagTreeReader& _TagTree;
    std::vector<CVectorGraphicsImage>& _Images;
    uint64_t _NumOfXmlBytesRead = 0; ///< of all blobs together, which the size of the file limits
};

/// The points of a shape that is stored as tags, reworked as hosts want them; empty where nobody knows where they
/// stand. Missing fields are failed assertions.
CShapePoints GetShapePointsOfTags(const std::string& zelShapeClass, CZelMetaDataForShapeVolumeObject& volObject);

} // namespace Zel
