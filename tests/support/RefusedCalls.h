// A process of its own in which some system calls fail: the ways that are taken where a file system or an
// older kernel lacks something.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {

struct RefusedCall {
    long number;
    std::uint32_t argument; ///< From 0.
    std::uint32_t bits;     ///< Refused if the argument has all of them.
    int error;
};

inline bool Refuse(const std::vector<RefusedCall>& calls) {
    std::vector<sock_filter> steps;
    for (const RefusedCall& call : calls) {
        const auto argumentAt =
            static_cast<std::uint32_t>(offsetof(seccomp_data, args) + sizeof(std::uint64_t) * call.argument);
        const auto answer = SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(call.error);
        steps.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
        steps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call.number), 0, 4));
        steps.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, argumentAt));
        steps.push_back(BPF_STMT(BPF_ALU | BPF_AND | BPF_K, call.bits));
        steps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.bits, 0, 1));
        steps.push_back(BPF_STMT(BPF_RET | BPF_K, answer));
    }
    steps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(steps.size()), steps.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Whether the action says so in a process in which the calls are refused.
template <typename Action> bool SucceedsWithout(const std::vector<RefusedCall>& calls, Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        bool success = false;
        try {
            success = Refuse(calls) && action();
        } catch (const std::exception&) {
            success = false;
        }
        ::_exit(success ? 0 : 1);
    }
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

} // namespace quavernet::test
