#include "tooldeck/containers/QvContainerInstances.h"

template class QvDynArrayBase<char>;
template class QvDynArray<char>;
template class QvDynArrayBase<double>;
template class QvDynArray<double>;
template class QvDynArrayBase<QvGePoint>;
template class QvDynArray<QvGePoint>;
template class QvList<QvGePoint>;
template class QvDList<QvGePoint>;
template class QvDynArrayBase<QvListNode<QvGePoint>*>;
template class QvDynArray<QvListNode<QvGePoint>*>;
template class QvQuene<long>;
