#pragma once

// Every text the document node writes: its red log lines, and the two
// diagnostics As<T>() prints with printf before it throws (a public header
// because As<T> is a template compiled by its callers). Texts with pieces
// around a value are split where the value goes.
namespace tavrin::plugin::json::messages::node {

inline constexpr char kUnknownKind[] = "unknow json node type!";
inline constexpr char kArrayRequired[] = "json node type Array required!";
// kArrayRequired, then this, then the node's Type().
inline constexpr char kThisTypeIs[] = " this type is ";
inline constexpr char kObjectRequired[] = "json node type Object required!";
// " Add key " KEY " fail, json node type Object required!"
inline constexpr char kAddKey[] = " Add key ";
inline constexpr char kAddKeyFailed[] = " fail, json node type Object required!";
// "over range:index(" INDEX ")>=Array size(" SIZE ")!"
inline constexpr char kOverRange[] = "over range:index(";
inline constexpr char kOverRangeSize[] = ")>=Array size(";
inline constexpr char kOverRangeEnd[] = ")!";
// "can't remove,key " KEY " doesn't exsit!"
inline constexpr char kRemoveKey[] = "can't remove,key ";
inline constexpr char kRemoveKeyMissing[] = " doesn't exsit!";
inline constexpr char kEmptyNode[] = "json node is empty!";

// As<T>() on a node of another kind, and on a node with no value: printf
// formats of the function name, the line and (first one) the node's Type().
inline constexpr char kAsWrongKind[] = "%s %d : T _type error! This type is %s !\n";
inline constexpr char kAsNoValue[] = "%s %d : As():_buf can't be nullptr!";

// Copying a node whose value was taken away (std::runtime_error).
inline constexpr char kCopyNoValue[] = "copy():ptr can't be nullptr!";

}  // namespace tavrin::plugin::json::messages::node
