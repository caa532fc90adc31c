#pragma once
#include "Fuzzing/Walk/Answers.h"

#include <functional>
#include <vector>

namespace Fuzzing
{

// The parts of a full walk.

/// Version, thumbnail, custom data, and what needs no document at all.
void WalkDocumentData(CAnswers& answers, AC_HFILE document);
void WalkGroupCustomData(CAnswers& answers, AC_HGROUP group);
/// An area with its images; `withPropertiesOfAbove` also what an area tells of its group and document.
void WalkArea(CAnswers& answers, AC_HAREA area, bool withPropertiesOfAbove);
/// The property sets of an area.
void WalkProperties(CAnswers& answers, AC_HAREA area, bool withPropertiesOfAbove);
void WalkImage(CAnswers& answers, AC_HIMAGE image);
/// One property set with all its values, as `ask` gets it: (key, parameters, address of the set) to a result.
using CSetGetter = std::function<AC_Result(const wchar_t* key, const AC_PARAMS* params, AC_HPROPERTY* set)>;
void WalkSet(CAnswers& answers, const CSetGetter& get, const wchar_t* key, std::vector<AC_PARAM_ELEMENT> params = {});

} // namespace Fuzzing
