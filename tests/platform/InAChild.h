// Acts in a process of their own: what they change, and who they become, ends with it.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vk32 {

/// Runs `act` in a child, as that user if it is not the superuser's own, and gives its result, 0 to 254; 255 if it came
/// to no end of its own.
template <class Act>
int InAChild(Act act, unsigned user = 0) {
  const pid_t child = fork();
  if (child == 0) _exit(user == 0 || (setgid(user) == 0 && setuid(user) == 0) ? act() : 255);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
}

constexpr unsigned Nobody = 65534;

}  // namespace vk32
