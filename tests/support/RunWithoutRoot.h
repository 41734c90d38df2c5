#pragma once
// Root ignores permission bits, so a behaviour that depends on them (a
// write-protected file, an unwritable folder) is checked in a forked child
// that gives up root first. Tests running as an ordinary user run the check
// directly. The check returns "" on success or a message saying what failed;
// the working directory must be open to the unprivileged user.

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace testsupport {

inline constexpr uid_t kUnprivilegedId = 65534;  // "nobody" on Debian

inline std::string RunWithoutRoot(const std::function<std::string()>& check) {
  if (geteuid() != 0) return check();
  int fds[2];
  if (pipe(fds) != 0) return "pipe failed";
  const pid_t pid = fork();
  if (pid < 0) return "fork failed";
  if (pid == 0) {
    close(fds[0]);
    std::string message;
    if (setgroups(0, nullptr) != 0 || setgid(kUnprivilegedId) != 0 ||
        setuid(kUnprivilegedId) != 0) {
      message = "could not give up root";
    } else {
      message = check();
    }
    (void)!write(fds[1], message.data(), message.size());
    _exit(0);  // no exit handlers or leak checks of the parent's state
  }
  close(fds[1]);
  std::string message;
  char block[256];
  ssize_t got = 0;
  while ((got = read(fds[0], block, sizeof block)) > 0)
    message.append(block, static_cast<size_t>(got));
  close(fds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return "child ended abnormally " + message;
  return message;
}

}  // namespace testsupport
