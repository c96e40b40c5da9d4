#pragma once

#include "tests/support/Spine.h"

/// The host with stores in a place where nothing can be written, so that they live in memory alone
/// and a search tries many times as much.
class MemorySpine : public Spine {
public:
    MemorySpine() : Spine("/dev/null") {}
};
