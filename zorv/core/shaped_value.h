#pragma once

class CZipWrapper;
class ZoReaderObject;

namespace zorv::detail {

/// Reads a matrix or vector whose shape is fixed. A value of another shape is dropped: the target stays.
template <class T>
void ReadShaped(T& target, ZoReaderObject* object) {
    T taken(target);
    taken.Read(object);
    target.AssignSameShape(taken);
}
template <class T>
void ReadShaped(T& target, CZipWrapper* archive) {
    T taken(target);
    taken.ReadV9(archive);
    target.AssignSameShape(taken);
}

}  // namespace zorv::detail
