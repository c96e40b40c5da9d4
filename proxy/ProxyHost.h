#pragma once

class EventLoop;
class Network;
class TrayForm;
struct Services;

/// What a connection asks of the program around it.
struct ProxyHost {
    Services& services;
    TrayForm& tray;
    Network& network;
    EventLoop& loop;
};
