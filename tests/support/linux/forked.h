#pragma once

#include <functional>

#include <sys/resource.h>

/// Runs `body` in a copy of this process that ends afterwards, for what a process cannot take back:
/// limits, rights. Its failed expectations are printed and make the answer false. What was made
/// outside of it is better not touched inside.
[[nodiscard]] bool passesForked(const std::function<void()>& body);

/// Gives up the rights of the superuser, whom no permission bits bind, for those of a user who owns
/// nothing. For a forked body only. Other users stay who they are.
void becomeNobody();

/// Lets the process open nothing more, while what is open stays open. Gives the limit of before.
/// For a forked body only.
rlimit refuseDescriptors();

/// The user and the group that `becomeNobody` makes of the superuser.
constexpr unsigned nobody = 65534;
