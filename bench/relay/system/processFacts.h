#pragma once

#include <cstdint>

#include <sys/types.h>

/// What the system knows about a process group, summed over its processes and their threads.

/// Processor time so far, in nanoseconds, of living and ended threads.
[[nodiscard]] std::int64_t processorNanoseconds(pid_t group);

/// Memory in bytes, shared pages counted by their share (PSS).
[[nodiscard]] std::int64_t memoryBytes(pid_t group);

/// The part of it that belongs to no file. Only this shows growth: the share of the libraries
/// changes whenever a program that uses them too starts or ends.
[[nodiscard]] std::int64_t ownMemoryBytes(pid_t group);

/// How often the threads that live now have gone to sleep so far: as often they woke up.
[[nodiscard]] std::int64_t wakeUps(pid_t group);
