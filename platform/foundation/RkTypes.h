#pragma once
// The scalar types every part of the toolkit speaks in.
#include <cstdint>

typedef double RkReal;        // times in seconds, distances in the system's length unit
typedef std::uint32_t RkU32;  // indices and counts
typedef bool RkBoolean;
