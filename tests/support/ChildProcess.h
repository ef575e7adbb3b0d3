#pragma once

#include <csignal>
#include <functional>

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace daylark::test {

/// A forked copy of the test that runs `work` and ends without clean-up; for what must be killed, starved or
/// stripped of its rights. Start it while no other thread of the test runs. Killed, if still there, when this
/// goes.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<int()>& work)
        : id_(::fork()) {
        if (id_ == 0) ::_exit(work());
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The exit status, or minus the signal that ended it.
    int wait() {
        if (id_ <= 0) return -1;
        int status = 0;
        ::waitpid(id_, &status, 0);
        id_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    void kill() {
        if (id_ <= 0) return;
        ::kill(id_, SIGKILL);
        wait();
    }

private:
    pid_t id_;
};

/// Runs `work` where a folder without write permission is one: as nobody, when the tests run as root.
inline int runWithoutRootRights(const std::function<int()>& work) {
    return ChildProcess([&work] {
               constexpr uid_t nobody = 65534;
               if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) return 99;
               return work();
           })
        .wait();
}

} // namespace daylark::test
