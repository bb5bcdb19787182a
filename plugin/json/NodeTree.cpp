// Deep copy and release of node trees without recursion over the depth of the
// tree: a tree nested as deeply as the parser admits is copied and freed on a
// small thread stack.
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "json/JsonNode.h"
#include "json/internal/NodeAccess.h"
#include "json/internal/ReleaseDepth.h"

namespace tavrin::plugin::json {

namespace {

using detail::IsFilledContainer;
using detail::KindOf;
using detail::kRecursiveReleaseLevels;
using detail::ReleaseLevels;
using detail::tRecursiveReleases;
using detail::ValueOf;
using Array = Node::Array;
using Object = Node::Object;

// A container node of the copy that still has to receive its elements, and
// the node it copies.
struct PendingCopy {
    Node* target;
    const Node* source;
};
using PendingCopies = std::vector<PendingCopy>;

// A nested container that copying fills level by level; any other node is
// copied as the copy constructor copies it (one without a _copy handler
// copies as a node of its kind without a value).
bool IsCopiedByLevel(const Node& node) { return IsFilledContainer(node) && node._copy; }

// Copies the elements of `source` into `target` (reserved to their number, so
// their places do not move): leaves at once, nested containers as nodes of
// their kind without a value, queued in `pending`.
void CopyElements(const Array& source, Array& target, PendingCopies& pending) {
    target.reserve(source.size());
    for (const Node& item : source) {
        if (!IsCopiedByLevel(item)) {
            target.push_back(item);
            continue;
        }
        target.push_back(KindOf(item));
        pending.push_back({&target.back(), &item});
    }
}

void CopyElements(const Object& source, Object& target, PendingCopies& pending) {
    target.reserve(source.size());
    for (const auto& member : source) {
        if (!IsCopiedByLevel(member.value)) {
            target.push_back(member);
            continue;
        }
        target.emplace_back(member.hash, std::string(member.key), KindOf(member.value));
        pending.push_back({&target.back().value, &member.value});
    }
}

// Gives `node` a new, empty container through its own _create handler, so
// that its _destroy handler frees it as it expects; a node without handlers,
// or with those of another kind, gets one from new.
template <class T>
T& NewContainer(Node& node) {
    if (node._create && node.Is<T>())
        node._create(&node);
    else
        node._buf = new T();
    return *static_cast<T*>(node._buf);
}

// Frees the container NewContainer gave `node`, with all that was copied into
// it so far.
template <class T>
void FreeContainer(Node& node) noexcept {
    if (node._destroy && node.Is<T>())
        node._destroy(&node);
    else
        delete static_cast<T*>(node._buf);
    node._buf = nullptr;
}

// The target owns its new container before it is filled, so a failure while
// filling frees everything made so far.
template <class T>
void FillPending(const PendingCopy& copy, PendingCopies& pending) {
    CopyElements(*static_cast<const T*>(copy.source->_buf), NewContainer<T>(*copy.target), pending);
}

template <class T>
void CopyTree(Node* node, const T& source) {
    T& root = NewContainer<T>(*node);
    try {
        PendingCopies pending;
        CopyElements(source, root, pending);
        while (!pending.empty()) {
            const PendingCopy next = pending.back();
            pending.pop_back();
            if (next.source->Is<Array>())
                FillPending<Array>(next, pending);
            else
                FillPending<Object>(next, pending);
        }
    } catch (...) {
        FreeContainer<T>(*node);
        throw;
    }
}

// Moves the containers held directly in `node`'s value to `out`.
void MoveOutNested(Node& node, std::vector<Node>& out) {
    if (Array* items = ValueOf<Array>(node)) {
        for (Node& item : *items)
            if (IsFilledContainer(item)) out.push_back(std::move(item));
    } else if (Object* members = ValueOf<Object>(node)) {
        for (auto& member : *members)
            if (IsFilledContainer(member.value)) out.push_back(std::move(member.value));
    }
}

// Frees the containers nested in `node`'s value one after another, so that
// freeing the value itself goes one level deep only. Without memory for the
// work list, what is left is freed by plain recursion.
void FreeNested(Node& node) noexcept {
    std::vector<Node> pending;
    try {
        MoveOutNested(node, pending);
        while (!pending.empty()) {
            Node next(std::move(pending.back()));
            pending.pop_back();
            MoveOutNested(next, pending);
        }
    } catch (const std::bad_alloc&) {
    }
}

}  // namespace

void Node::CopyContainer(Node* node, const Array& src) { CopyTree(node, src); }
void Node::CopyContainer(Node* node, const Object& src) { CopyTree(node, src); }

// Containers nested this deep are freed by plain recursion, which is the
// quickest way; below that, each container's nested containers are moved out
// and freed one after another. A node without a _destroy handler frees
// nothing.
void Node::Release() noexcept {
    if (IsFilledContainer(*this) && _destroy) {
        if (tRecursiveReleases < kRecursiveReleaseLevels) {
            const ReleaseLevels level;
            _destroy(this);
            _buf = nullptr;
            return;
        }
        FreeNested(*this);
    }
    if (_destroy) _destroy(this);
    _buf = nullptr;
}

}  // namespace tavrin::plugin::json
