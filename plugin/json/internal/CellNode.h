#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Nodes whose value lives in a cell (ValueCells.h). Their handlers take the
// value's room from a cell and give it back to one; otherwise such a node is
// of its kind in every way, and its copies are too.

#include <new>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "json/JsonNode.h"
#include "json/NodeMessages.h"
#include "json/internal/ValueCells.h"

namespace tavrin::plugin::json::detail {

// A new T made from `args` in a cell of its own.
template <class T, class... Args>
T* NewInCell(Args&&... args) {
    void* room = AllocateCell(sizeof(T));
    try {
        return new (room) T(std::forward<Args>(args)...);
    } catch (...) {
        ReleaseCell(room);
        throw;
    }
}

// Replaces the handler in `slot` by `handler`, made in place: quicker than
// assigning, which makes a temporary and swaps it in.
template <class Function, class Handler>
void SetHandler(Function& slot, Handler handler) {
    slot.~Function();
    new (&slot) Function(handler);
}

// Installs kind T on `node`, which holds nothing, with the handlers of a
// value that lives in a cell: they behave as those Init<T> gives, but the
// room of the value and of its copies is a cell. The caller sets _buf.
template <class T>
void InstallCellKind(Node& node) {
    node._type = &typeid(T);
    SetHandler(node._destroy, [](Node* n) {
        if (n->_buf == nullptr) return;
        static_cast<T*>(n->_buf)->~T();
        ReleaseCell(n->_buf);
    });
    SetHandler(node._create, [](Node* n) { n->_buf = NewInCell<T>(); });
    SetHandler(node._copy, [](Node* n, void* src) {
        if (n == nullptr || src == nullptr) throw std::runtime_error(messages::node::kCopyNoValue);
        // A container's copy takes its room from _create, level by level.
        if constexpr (std::is_same_v<T, Node::Array> || std::is_same_v<T, Node::Object>)
            n->copy<T>(n, src);
        else
            n->_buf = NewInCell<T>(*static_cast<const T*>(src));
    });
}

// Gives `node`, which holds nothing, a value made from `args` in a cell of
// the arena.
template <class T, class... Args>
void PutInCell(Node& node, CellArena& arena, Args&&... args) {
    void* room = arena.Allocate(sizeof(T));
    try {
        node._buf = new (room) T(std::forward<Args>(args)...);
    } catch (...) {
        ReleaseCell(room);
        throw;
    }
    InstallCellKind<T>(node);
}

}  // namespace tavrin::plugin::json::detail
