#include "Tools/boardsim/Host/FuseServer.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "Tools/boardsim/Host/FuseRequests.h"

namespace boardsim {

struct FuseServer::State {
    FuseContents contents;
    std::function<void()> beforeRequest;
    fuse_session* session = nullptr;
    fuse_buf buffer{};

    ~State() {
        if (session != nullptr) {
            fuse_session_destroy(session);
        }
        std::free(buffer.mem);
    }
};

FuseServer::FuseServer(Descriptor device, std::shared_ptr<const ServedDirectory> root,
                       std::function<void()> beforeRequest)
    : state_(new State{{ServedNodes(std::move(root), FUSE_ROOT_ID)}, std::move(beforeRequest)}) {
    char name[] = "boardsim";
    char* words[] = {name, nullptr};
    fuse_args arguments = FUSE_ARGS_INIT(1, words);
    const fuse_lowlevel_ops table = fuseRequests();
    state_->session = fuse_session_new(&arguments, &table, sizeof table, &state_->contents);
    fuse_opt_free_args(&arguments);
    if (state_->session == nullptr) {
        throw std::runtime_error("cannot make a FUSE session");
    }
    // A mount point of this form means: mounted already, serve this descriptor.
    const std::string mounted = "/dev/fd/" + std::to_string(device.get());
    if (fuse_session_mount(state_->session, mounted.c_str()) != 0) {
        throw std::runtime_error("cannot serve the FUSE file system");
    }
    device.release();
}

FuseServer::~FuseServer() = default;

int FuseServer::descriptor() const {
    return fuse_session_fd(state_->session);
}

bool FuseServer::serveOne() {
    const int received = fuse_session_receive_buf(state_->session, &state_->buffer);
    if (received > 0) {
        state_->beforeRequest();
        fuse_session_process_buf(state_->session, &state_->buffer);
    }
    const bool tryAgain = received == -EAGAIN || received == -EINTR;
    return (received > 0 || tryAgain) && fuse_session_exited(state_->session) == 0;
}

}  // namespace boardsim
