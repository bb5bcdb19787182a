#include "json/internal/CellNode.h"

#include <string>
#include <typeinfo>

#include "base/Fraction.h"
#include "json/internal/ReleaseDepth.h"

namespace tavrin::plugin::json::detail {

namespace {

// Gives back the storage of a vector whose elements have all been destroyed.
template <class Vector>
void ReleaseStorage(Vector& items) noexcept {
    if (items.data() != nullptr) items.get_allocator().deallocate(items.data(), items.capacity());
}

// Frees the items of a container whose value lives in a cell, ending their
// lives. Items with the cell handlers of their kind are freed here, nested
// containers too as deep as the thread's bound of recursive freeing allows;
// their handlers hold no state, so skipping their destructors changes
// nothing. Their cells are given back a run of one chunk at a time. Any
// other item is destroyed as a Node, which counts the levels swept above it.
class Sweep {
public:
    explicit Sweep(int levelsLeft) : _levelsLeft(levelsLeft) {}

    void Free(Node::Array& items) noexcept {
        for (Node& item : items) FreeItem(item);
        ReleaseStorage(items);
    }

    void Free(Node::Object& members) noexcept {
        for (auto& member : members) {
            member.key.~basic_string();
            FreeItem(member.value);
        }
        ReleaseStorage(members);
    }

private:
    void FreeItem(Node& item) noexcept {
        const std::type_info* type = item._type;
        bool freed = false;
        if (type == &typeid(double))
            freed = FreeCellValue<double>(item);
        else if (type == &typeid(long long))
            freed = FreeCellValue<long long>(item);
        else if (type == &typeid(std::string))
            freed = FreeCellValue<std::string>(item);
        else if (type == &typeid(Node::Object))
            freed = FreeCellValue<Node::Object>(item);
        else if (type == &typeid(Node::Array))
            freed = FreeCellValue<Node::Array>(item);
        else if (type == &typeid(bool))
            freed = FreeCellValue<bool>(item);
        else if (type == &typeid(tavrin::base::Fraction))
            freed = FreeCellValue<tavrin::base::Fraction>(item);
        if (!freed) Destroy(item);
    }

    // False, with `item` untouched, unless it is of kind T with the handlers
    // of a value in a cell (and, for a container, a level is left to sweep).
    template <class T>
    bool FreeCellValue(Node& item) noexcept {
        if (!HasCellHandlers<T>(item)) return false;
        auto* value = static_cast<T*>(item._buf);
        if (value == nullptr) return true;
        if constexpr (kIsContainer<T>) {
            if (_levelsLeft == 0) return false;
            --_levelsLeft;
            ++_levelsSwept;
            Free(*value);
            --_levelsSwept;
            ++_levelsLeft;
        } else {
            value->~T();
        }
        _cells.Add(value);
        return true;
    }

    void Destroy(Node& item) noexcept {
        if (_levelsSwept == 0) return item.~Node();
        const ReleaseLevels swept(_levelsSwept);
        item.~Node();
    }

    CellReleases _cells;
    int _levelsLeft;
    int _levelsSwept = 0;
};

}  // namespace

void FreeSweeping(Node::Array& items) noexcept {
    Sweep(kRecursiveReleaseLevels - tRecursiveReleases).Free(items);
}

void FreeSweeping(Node::Object& members) noexcept {
    Sweep(kRecursiveReleaseLevels - tRecursiveReleases).Free(members);
}

}  // namespace tavrin::plugin::json::detail
