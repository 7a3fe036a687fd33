// While an object of this class lives, the process has the rights of an ordinary user, so that file rights
// hold in tests that the superuser runs as well.
#pragma once

#include <exception>
#include <stdexcept>

#include <unistd.h>

namespace quavernet::test {

class OrdinaryUser {
public:
    OrdinaryUser() : m_isSuperuser(geteuid() == 0) {
        constexpr uid_t Nobody = 65534;
        if (m_isSuperuser && seteuid(Nobody) != 0) {
            throw std::runtime_error("seteuid");
        }
    }
    ~OrdinaryUser() {
        if (m_isSuperuser && seteuid(0) != 0) {
            std::terminate();
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool m_isSuperuser;
};

} // namespace quavernet::test
