#pragma once

// Symbol visibility. The plug-in is built with hidden visibility by default:
// only what is marked TAVRIN_PLUGIN_API leaves libpluginjson.so. Everything
// the host supplies is marked TAVRIN_HOST_API so that references to it stay
// ordinary undefined symbols, resolved from the host process at load time.
#if defined(__GNUC__)
#define TAVRIN_HOST_API __attribute__((visibility("default")))
#define TAVRIN_PLUGIN_API __attribute__((visibility("default")))
#else
#define TAVRIN_HOST_API
#define TAVRIN_PLUGIN_API
#endif
