#pragma once

class EventLoop;
class Network;
class SettingsStore;
class TrayForm;
struct ProcessValues;

/// What a connection asks of the program around it.
struct ProxyHost {
    ProcessValues& values;
    SettingsStore& settings;
    TrayForm& tray;
    Network& network;
    EventLoop& loop;
};
