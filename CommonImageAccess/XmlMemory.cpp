#include "CommonImageAccess/XmlMemory.h"

#include <new>
#include <utility>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace CIA
{

CXmlMemory::~CXmlMemory()
{
    while (_first)
        ::operator delete(std::exchange(_first, _first->Next));
}

void* CXmlMemory::allocate(XMLSize_t size)
{
    void* memory = ::operator new(sizeof(CBlock) + size, std::nothrow);
    if (!memory)
        throw xercesc::OutOfMemoryException();
    auto* block = new (memory) CBlock{nullptr, _first};
    if (_first)
        _first->Previous = block;
    _first = block;
    return block + 1;
}

void CXmlMemory::deallocate(void* memory)
{
    if (!memory)
        return;
    CBlock* block = static_cast<CBlock*>(memory) - 1;
    if (block->Next)
        block->Next->Previous = block->Previous;
    (block->Previous ? block->Previous->Next : _first) = block->Next;
    ::operator delete(block);
}

xercesc::MemoryManager* CXmlMemory::getExceptionMemoryManager()
{
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

} // namespace CIA
