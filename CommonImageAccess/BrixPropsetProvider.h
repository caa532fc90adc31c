#pragma once
#include "Brix/AccessorInterface.h"

namespace CIA
{

/// Base of every model object that answers property requests.
class CBrixPropsetProvider
{
public:
    virtual ~CBrixPropsetProvider() = default;
};

} // namespace CIA
