#include "json/internal/CellNode.h"

#include <string>
#include <typeinfo>

#include "base/Fraction.h"

namespace tavrin::plugin::json::detail {

namespace {

// Frees `item` and ends its life if it is a leaf of kind T whose value lives
// in a cell: its handlers then do nothing when destroyed, and its cell joins
// `cells`. False, with `item` untouched, for any other node.
template <class T>
bool FreeCellLeaf(Node& item, CellReleases& cells) noexcept {
    if (!HasCellHandlers<T>(item)) return false;
    if (item._buf != nullptr) {
        static_cast<T*>(item._buf)->~T();
        cells.Add(item._buf);
    }
    return true;
}

void FreeItem(Node& item, CellReleases& cells) noexcept {
    const std::type_info* type = item._type;
    bool freed = false;
    if (type == &typeid(double))
        freed = FreeCellLeaf<double>(item, cells);
    else if (type == &typeid(long long))
        freed = FreeCellLeaf<long long>(item, cells);
    else if (type == &typeid(std::string))
        freed = FreeCellLeaf<std::string>(item, cells);
    else if (type == &typeid(bool))
        freed = FreeCellLeaf<bool>(item, cells);
    else if (type == &typeid(tavrin::base::Fraction))
        freed = FreeCellLeaf<tavrin::base::Fraction>(item, cells);
    if (!freed) item.~Node();
}

// Gives back the storage of a vector whose elements have all been destroyed.
template <class Vector>
void ReleaseStorage(Vector& items) noexcept {
    if (items.data() != nullptr) items.get_allocator().deallocate(items.data(), items.capacity());
}

}  // namespace

void FreeSweeping(Node::Array& items) noexcept {
    CellReleases cells;
    for (Node& item : items) FreeItem(item, cells);
    ReleaseStorage(items);
}

void FreeSweeping(Node::Object& members) noexcept {
    CellReleases cells;
    for (auto& member : members) {
        member.key.~basic_string();
        FreeItem(member.value, cells);
    }
    ReleaseStorage(members);
}

}  // namespace tavrin::plugin::json::detail
