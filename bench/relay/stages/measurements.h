#pragma once

#include "bench/relay/stages/Stage.h"

#include <cstddef>

/// The stages' measurements, each over the relay of `run`.

/// Round trips of a message while `silent` other connections are open; records the medians, the
/// tails and the relay's processor time for that number.
void measureTrips(const StageRun& run, std::size_t silent);

/// Round trips of a message that is sent in two writes.
void measureSplitTrips(const StageRun& run);

/// Bytes from the server to the client and the other way.
void measureBulkDown(const StageRun& run);
void measureBulkUp(const StageRun& run);

/// Openings up to the first answer, `count` in a series, all kept open until its end.
void measureOpenings(const StageRun& run, Figure figure, std::size_t count, std::size_t series);

/// Memory when idle, and what each of a thousand connections adds.
void measureMemory(const StageRun& run);

/// What the relay takes, and how it grows, when the client or the server stops reading.
void measureStalledClient(const StageRun& run);
void measureStalledServer(const StageRun& run);
