#include "manipulator/RkStatedSystem.h"

// Defined here so that the class's type information and virtual table live in this library.
RkStatedSystem::~RkStatedSystem() = default;
