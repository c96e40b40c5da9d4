#pragma once

#include "bench/relay/stages/Talker.h"

// What the program under test is to make of a turn. Each throws `BenchError` where it did not: a
// message that the filters do not see would be measured in vain.

/// A text in two writes: each read is taken for all of a message, so its length becomes that of the
/// first part. The two parts may arrive in one read all the same.
void hasLengthOfFirstPart(const traffic::Turn& turn, const Delivered& delivered);

/// All tokens of the client's text are expanded.
void hasNoToken(const traffic::Turn& turn, const Delivered& delivered);

/// Each text of the client has another colour than the one before.
[[nodiscard]] Check hasNewColour();

/// The time stands behind the contact's text.
void hasStamp(const traffic::Turn& turn, const Delivered& delivered);

/// The contact's client cannot read the typing notice.
void hidesTyping(const traffic::Turn& turn, const Delivered& delivered);

/// The first status of a sign-in is "Busy".
void signsInAsBusy(const traffic::Turn& turn, const Delivered& delivered);
