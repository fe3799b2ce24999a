#include "Tools/boardsim/Host/SocketRequests.h"

#include <fcntl.h>
#include <net/if.h>
#include <poll.h>
#include <seccomp.h>

#include <array>
#include <cstring>

#include "Tools/boardsim/Host/CallerMemory.h"
#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

/// Requests whose number is `value` where `mask` has ones. The upper half of the argument does not count.
struct Requests {
    std::uint64_t mask;
    std::uint64_t value;
};
constexpr std::array<Requests, 4> kIntercepted{{
    {0xFFFFFFFF, 0x8947},
    {0xFFFFFFFF, 0x8948},
    {0xFFFFFFFF, 0x8949},
    {0xFFFFFFF0, 0x89F0},
}};

constexpr unsigned kCodeArgument = 1;  // of ioctl()

struct FilterDeleter {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, FilterDeleter>;

Filter makeFilter(bool mayGainPrivileges) {
    Filter filter(seccomp_init(SCMP_ACT_ALLOW));
    if (!filter) {
        return filter;
    }
    // Programs of another word size are none of our business; none of it shall cost speculation.
    seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ALLOW);
    seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_SSB, 1);
    seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_NNP, mayGainPrivileges ? 0 : 1);
    for (const Requests& requests : kIntercepted) {
        const scmp_arg_cmp code{kCodeArgument, SCMP_CMP_MASKED_EQ, requests.mask, requests.value};
        if (seccomp_rule_add_array(filter.get(), SCMP_ACT_NOTIFY, SCMP_SYS(ioctl), 1, &code) != 0) {
            return {};
        }
    }
    return filter;
}

Descriptor install(bool mayGainPrivileges) {
    const Filter filter = makeFilter(mayGainPrivileges);
    if (!filter || seccomp_load(filter.get()) != 0) {
        return {};
    }
    return Descriptor(seccomp_notify_fd(filter.get()));
}

}  // namespace

Descriptor interceptSocketRequests() {
    // Who may administer the system need not give up privileges for it.
    Descriptor listener = install(true);
    return listener ? std::move(listener) : install(false);
}

struct SocketRequests::Buffers {
    seccomp_notif* request = nullptr;
    seccomp_notif_resp* response = nullptr;

    Buffers() {
        if (seccomp_notify_alloc(&request, &response) != 0) {
            throw systemError("cannot answer requests of network interfaces");
        }
    }
    Buffers(const Buffers&) = delete;
    Buffers& operator=(const Buffers&) = delete;
    ~Buffers() { seccomp_notify_free(request, response); }
};

SocketRequests::SocketRequests(Descriptor listener, Answer answer)
    : listener_(std::move(listener)), answer_(std::move(answer)), buffers_(std::make_unique<Buffers>()) {}

SocketRequests::~SocketRequests() = default;

bool SocketRequests::serveOne() {
    pollfd waiting{listener_.get(), POLLIN, 0};
    if (poll(&waiting, 1, 0) < 0 || (waiting.revents & POLLIN) == 0) {
        return (waiting.revents & (POLLHUP | POLLERR)) == 0;
    }
    seccomp_notif& request = *buffers_->request;
    seccomp_notif_resp& response = *buffers_->response;
    std::memset(&request, 0, sizeof request);
    if (seccomp_notify_receive(listener_.get(), &request) != 0) {
        return true;  // The program was killed meanwhile.
    }
    const std::optional<IoctlAnswer> answer = answerFor(
        static_cast<pid_t>(request.pid), static_cast<unsigned>(request.data.args[1]), request.data.args[2]);
    std::memset(&response, 0, sizeof response);
    response.id = request.id;
    if (!answer) {
        response.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    } else if (answer->error != std::errc{}) {
        response.error = -static_cast<int>(answer->error);
    } else {
        response.val = answer->value;
    }
    seccomp_notify_respond(listener_.get(), &response);
    return true;
}

std::optional<IoctlAnswer> SocketRequests::answerFor(pid_t caller, unsigned code, std::uint64_t address) {
    const CallerMemory memory(caller);
    ifreq record{};
    if (memory.readRecord(address, record) != std::errc{}) {
        return std::nullopt;  // The kernel knows better what is wrong with it.
    }
    const auto bytes = std::as_writable_bytes(std::span(&record, 1));
    SocketRequest request{code, std::string(record.ifr_name, strnlen(record.ifr_name, IFNAMSIZ)),
                          bytes.subspan(IFNAMSIZ)};
    const std::optional<IoctlAnswer> answer = answer_(request);
    // A caller that died may have left its number to somebody else.
    const bool isAlive = seccomp_notify_id_valid(listener_.get(), buffers_->request->id) == 0;
    if (answer && answer->error == std::errc{} && isAlive) {
        const std::errc written = memory.writeRecord(address, record);
        return written == std::errc{} ? answer : IoctlAnswer{0, written};
    }
    return answer;
}

}  // namespace boardsim
