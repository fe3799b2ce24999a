#include "Tools/boardsim/Host/FuseRequests.h"

namespace boardsim {
namespace {

void turnOffSplicing(void*, fuse_conn_info* connection) {
    // Requests are small, and a pipe costs more than it saves.
    connection->want &=
        ~static_cast<unsigned>(FUSE_CAP_SPLICE_READ | FUSE_CAP_SPLICE_WRITE | FUSE_CAP_SPLICE_MOVE);
}

}  // namespace

FuseContents& contentsOf(fuse_req_t request) {
    return *static_cast<FuseContents*>(fuse_req_userdata(request));
}

fuse_lowlevel_ops fuseRequests() {
    fuse_lowlevel_ops table{};
    table.init = turnOffSplicing;
    addTreeRequests(table);
    addFileRequests(table);
    return table;
}

}  // namespace boardsim
