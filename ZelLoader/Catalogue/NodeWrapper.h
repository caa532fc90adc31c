#pragma once
#include "CommonUtil/Assertion.h"
#include "ZelLoader/TagTree/ZelDataField.h"

#include <cstdint>
#include <vector>

namespace Zel
{

struct CCatalogueClass;

/// One row of the catalogue: a child of a kind of node, and the accessor by which it is asked for.
struct CCatalogueRow
{
    uint32_t LowestTag = 0;
    uint32_t HighestTag = 0; ///< differs from the lowest one for devices only, which have no tag of their own
    const char* Accessor = nullptr;
    const CCatalogueClass& (*ClassOfChild)() = nullptr; ///< null for a number, a text or an array
};

/// What the catalogue knows about a kind of node. The wrapper classes themselves tell it, so that it holds no tag
/// twice.
struct CCatalogueClass
{
    /// The row for a child with this tag; null when the catalogue does not know the tag under this parent.
    const CCatalogueRow* Row(uint32_t tag) const;

    std::vector<CCatalogueRow> Rows;       ///< in the order of the class
    const char* NameOfSecondTag = nullptr; ///< the accessor of the node's own second tag; null when it means nothing
};

/// What the catalogue knows about the nodes that `Wrapper` stands for, as CZelImgDocMetaData does for the root.
template <typename Wrapper>
const CCatalogueClass& CatalogueOf()
{
    static const CCatalogueClass Catalogue = []
    {
        CCatalogueClass catalogue;
        const Wrapper describesItself(catalogue);
        return catalogue;
    }();
    return Catalogue;
}

/// A typed view of a node of the tag tree. A class has one member for each child that it knows; the member is called
/// like a function and looks for the child when it is first asked. The node must outlive the wrapper's use, and what
/// an accessor answers lives as long as the wrapper. Caches are filled without a lock.
class CZelDataFieldNodeWrapper
{
public:
    CZelDataFieldNodeWrapper(const CZelDataFieldNodeWrapper&) = delete;
    CZelDataFieldNodeWrapper& operator=(const CZelDataFieldNodeWrapper&) = delete;

    /// The node behind the wrapper; for a blob or a reference to a TIFF directory the way to what it holds.
    CZelDataField* DbgNode() const { return Node; }

protected:
    explicit CZelDataFieldNodeWrapper(CZelDataField* node) : Node(node) { ZEL_ASSERT(node); }
    explicit CZelDataFieldNodeWrapper(CCatalogueClass& catalogue) : _CatalogueToFill(&catalogue) {}
    ~CZelDataFieldNodeWrapper() = default;

private:
    friend class CFieldOfNode;

    CZelDataField* Node = nullptr;
    CCatalogueClass* _CatalogueToFill = nullptr; ///< set while a class describes itself, without a node
};

/// The view of a node whose tag is known.
template <uint32_t TagOfNode>
class CZelNodeWithTag : public CZelDataFieldNodeWrapper
{
public:
    /// Asserts that the node is there and has the class's tag.
    explicit CZelNodeWithTag(CZelDataField* node) : CZelDataFieldNodeWrapper(node)
    {
        ZEL_ASSERT(node->Tag() == TagOfNode);
    }
    explicit CZelNodeWithTag(CCatalogueClass& catalogue) : CZelDataFieldNodeWrapper(catalogue) {}
};

/// The view of a device on an optical path; the node's tag is the device's ID.
class CZelDeviceNode : public CZelDataFieldNodeWrapper
{
public:
    /// The first tag that is no device ID.
    static constexpr uint32_t TagBehindDevices = 100;

    /// Asserts that the node is there and that its tag is a device ID.
    explicit CZelDeviceNode(CZelDataField* node) : CZelDataFieldNodeWrapper(node)
    {
        ZEL_ASSERT(node->Tag() < TagBehindDevices);
    }
    explicit CZelDeviceNode(CCatalogueClass& catalogue) : CZelDataFieldNodeWrapper(catalogue) {}
};

} // namespace Zel
