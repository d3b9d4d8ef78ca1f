#pragma once

// The instantiations the module compiles once and exports (QvContainerInstances.cpp); including this header
// keeps every other translation unit from compiling them again.

#include "tooldeck/containers/QvDList.h"
#include "tooldeck/containers/QvDynArray.h"
#include "tooldeck/containers/QvGePoint.h"
#include "tooldeck/containers/QvList.h"
#include "tooldeck/containers/QvQuene.h"

extern template class QvDynArrayBase<char>;
extern template class QvDynArray<char>;
extern template class QvDynArrayBase<double>;
extern template class QvDynArray<double>;
extern template class QvDynArrayBase<QvGePoint>;
extern template class QvDynArray<QvGePoint>;
extern template class QvList<QvGePoint>;
extern template class QvDList<QvGePoint>;
extern template class QvDynArrayBase<QvListNode<QvGePoint>*>;
extern template class QvDynArray<QvListNode<QvGePoint>*>;
extern template class QvQuene<long>;
