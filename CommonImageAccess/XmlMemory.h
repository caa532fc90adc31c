#pragma once
#include <cstddef>
#include <xercesc/framework/MemoryManager.hpp>

namespace CIA
{

/// The memory of one parser. Whatever the parser leaves behind when it is let down half-way, as Xerces does where
/// memory runs out while it builds itself up, is freed with this.
class CXmlMemory : public xercesc::MemoryManager
{
public:
    CXmlMemory() = default;
    ~CXmlMemory() override;
    CXmlMemory(const CXmlMemory&) = delete;
    CXmlMemory& operator=(const CXmlMemory&) = delete;

    /// Throws xercesc::OutOfMemoryException, by which Xerces knows what has happened.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override; ///< may be null
    /// Exceptions outlive the parser: theirs is the memory of the program.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

private:
    /// Stands in front of each block, in a list of all of them.
    struct alignas(std::max_align_t) CBlock
    {
        CBlock* Previous;
        CBlock* Next;
    };

    CBlock* _first = nullptr;
};

} // namespace CIA
