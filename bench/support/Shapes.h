#pragma once

#include <cstddef>
#include <string>

// Generated JSON texts of a given size in one shape each, the same bytes on
// every run (a fixed pseudo-random sequence). Every text is an array or an
// object at the top, as the project's readers require.
namespace tavrin::bench {

// [n integers of up to ten digits, some negative]
std::string IntArray(std::size_t n);

// [n doubles with a fraction part, some with an exponent]
std::string DoubleArray(std::size_t n);

// {n members "k<i>" holding small integers and short strings}
std::string WideObject(std::size_t n);

// depth objects inside each other, each with an integer and a string member
// beside the nested one: {"i":0,"s":"level","next":{...}}
std::string DeepNesting(std::size_t depth);

// ["a string of n characters with an escape every 64"]
std::string LongString(std::size_t n);

// [n records {"id":..,"name":"..","active":..,"score":..,"tags":[..]}]
std::string RecordArray(std::size_t n);

// [n rings of 4 to 40 pairs of integers], as the rings of a map's polygons
// with coordinates in fixed point: many short arrays of short arrays
std::string RingArray(std::size_t n);

}  // namespace tavrin::bench
