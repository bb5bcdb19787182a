#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Where the quick reader puts the items of a container until the container
// ends, and how it hands them over. A container gets room for as many items
// as `guess` says (how many the last container in the same place had:
// documents repeat their shapes); one that ends with exactly that many is
// handed over whole, without moving an item. Otherwise its items are moved
// once into a container of exactly their number.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

#include "json/JsonNode.h"
#include "json/common/PositionIndex.h"
#include "json/internal/CellNode.h"
#include "json/internal/ValueCells.h"

namespace tavrin::plugin::json::detail {

// Moves the items of `from` to the end of `to`, which has room for them,
// and empties `from`.
template <class Container>
void MoveItems(Container& from, Container& to) {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
    from.clear();
}

// Gives `node`, which holds nothing, a container in a cell of `arena`; sets
// `guess` to `count`, the number of items it will hold.
template <class Container>
Container& NewContainer(Node& node, CellArena& arena, std::size_t count, std::uint32_t& guess) {
    guess = static_cast<std::uint32_t>(std::min<std::size_t>(count, UINT32_MAX));
    PutInCell<Container>(node, arena);
    return *static_cast<Container*>(node._buf);
}

// What the reader keeps of one nesting level of arrays, from one array to
// the next: runs of room where items go once an array outgrows its own.
// Their storage stays for the next array. The first run is kept apart, so
// that a level whose arrays need one allocates no list of runs.
struct ArrayLevel {
    Node::Array firstRun;
    std::vector<Node::Array> laterRuns;

    Node::Array& Run(std::size_t i) { return i == 0 ? firstRun : laterRuns[i - 1]; }
};

// The items of one array being read. Beyond the array's own room, items go
// into the level's runs, each with twice the room of the one before, so
// that no item moves until the array ends, however long it grows.
class ItemGathering {
public:
    ItemGathering(ArrayLevel& level, std::uint32_t& guess) : _level(level), _guess(guess) { _own.reserve(guess); }
    // Items of an array not handed over leave the runs with it.
    ~ItemGathering() {
        for (std::size_t i = 0; i < _runsUsed; ++i) _level.Run(i).clear();
    }
    ItemGathering(const ItemGathering&) = delete;
    ItemGathering& operator=(const ItemGathering&) = delete;

    // The container the next item goes into; it has room for it.
    Node::Array& Items() {
        Node::Array& last = _runsUsed == 0 ? _own : _level.Run(_runsUsed - 1);
        return last.size() < last.capacity() ? last : NextRun(last.capacity());
    }

    // Gives `node`, which holds nothing, an array of exactly the items.
    void HandTo(Node& node, CellArena& arena) {
        std::size_t count = _own.size();
        for (std::size_t i = 0; i < _runsUsed; ++i) count += _level.Run(i).size();
        Node::Array& exact = NewContainer<Node::Array>(node, arena, count, _guess);
        if (_runsUsed == 0 && _own.size() == _own.capacity()) {
            exact.swap(_own);
            return;
        }
        exact.reserve(count);
        MoveItems(_own, exact);
        for (std::size_t i = 0; i < _runsUsed; ++i) MoveItems(_level.Run(i), exact);
    }

private:
    static constexpr std::size_t kLeastRun = 4;

    // A run kept from an earlier array is taken with the room it has.
    Node::Array& NextRun(std::size_t previous) {
        if (_runsUsed > _level.laterRuns.size()) _level.laterRuns.emplace_back();
        Node::Array& run = _level.Run(_runsUsed++);
        if (run.capacity() == 0) run.reserve(std::max(kLeastRun, 2 * previous));
        return run;
    }

    ArrayLevel& _level;
    std::uint32_t& _guess;
    Node::Array _own;
    std::size_t _runsUsed = 0;
};

// What the reader keeps of one nesting level of objects, from one object to
// the next.
struct ObjectLevel {
    // Where members go once an object outgrows its own room.
    Node::Object scratch;
    // The members by key hash.
    common::PositionIndex index;
};

// The members of one object being read. Beyond the object's own room, they
// go on in the level's scratch table, in one piece for their index.
class MemberGathering {
public:
    MemberGathering(ObjectLevel& level, std::uint32_t& guess) : _level(level), _guess(guess) {
        _own.reserve(guess);
        _level.index.Clear();
    }

    common::PositionIndex& Index() { return _level.index; }

    // The table the next member goes into, holding the members so far.
    Node::Object& Items() {
        if (_inScratch) return _level.scratch;
        if (_own.size() < _own.capacity()) return _own;
        _level.scratch.clear();
        MoveItems(_own, _level.scratch);
        Node::Object().swap(_own);
        _inScratch = true;
        return _level.scratch;
    }

    // Gives `node`, which holds nothing, an object of exactly the members.
    void HandTo(Node& node, CellArena& arena) {
        Node::Object& items = _inScratch ? _level.scratch : _own;
        Node::Object& exact = NewContainer<Node::Object>(node, arena, items.size(), _guess);
        if (!_inScratch && _own.size() == _own.capacity()) {
            exact.swap(_own);
            return;
        }
        exact.reserve(items.size());
        MoveItems(items, exact);
    }

private:
    ObjectLevel& _level;
    std::uint32_t& _guess;
    Node::Object _own;
    bool _inScratch = false;
};

}  // namespace tavrin::plugin::json::detail
