#pragma once

class EventLoop;
class Network;
struct ProgramWindows;
struct Services;

/// What a connection asks of the program around it.
struct ProxyHost {
    Services& services;
    const ProgramWindows& windows;
    Network& network;
    EventLoop& loop;
};
