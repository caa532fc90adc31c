#pragma once
// The dictionary of the tag tree: every kind of node that the reader knows, with its tag, and every child of it that is
// looked at. A tag means something only under its parent: 2004 stands for four different things. Tags that stand in no
// row are kept in the tree, and nothing looks at them.
//
// The nesting starts at CZelImgDocMetaData; classes stand behind those that they contain.

#include "ZelLoader/Catalogue/ZELFormatDevices.h"
#include "ZelLoader/Catalogue/ZELFormatDocument.h"
#include "ZelLoader/Catalogue/ZELFormatFrame.h"
#include "ZelLoader/Catalogue/ZELFormatImage.h"
#include "ZelLoader/Catalogue/ZELFormatShape.h"
