#pragma once

#include "mem.h"

/// Registers a source file of this library with the memory tracking. Stands once in each source file, at file scope.
#define TOLV_MEM_INITIALIZER() static const MEM_INITIALIZER mem_initializer("TOLV")
