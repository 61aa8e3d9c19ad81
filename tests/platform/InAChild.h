// Acts in a process of their own: what they change, and who they become, ends with it.
#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vk32 {

/// Runs `act` in a child and gives its result, 0 to 254; 255 if it came to no end of its own.
template <class Act>
int InAChild(Act act) {
  const pid_t child = fork();
  if (child == 0) _exit(act());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
}

/// The same as the user nobody; for the superuser alone.
template <class Act>
int AsNobody(Act act) {
  return InAChild([&] { return setgid(65534) == 0 && setuid(65534) == 0 ? act() : 255; });
}

}  // namespace vk32
