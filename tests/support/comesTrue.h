#pragma once

#include "tests/support/Peer.h"

#include <QCoreApplication>

/// Waits for a condition while events are served.
template <typename Condition>
[[nodiscard]] bool comesTrue(Condition condition) {
    return becomesTrue([&] {
        QCoreApplication::processEvents();
        return condition();
    });
}
