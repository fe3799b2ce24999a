#include "Tools/boardsim/Host/FuseRequests.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace boardsim {
namespace {

struct Shape {
    mode_t mode;
    std::size_t bytes;
};

Shape shapeOf(const ServedNode& node) {
    struct Visitor {
        Shape operator()(const std::shared_ptr<const ServedFile>& file) const {
            return {S_IFREG | file->mode, file->bytes};
        }
        Shape operator()(const std::shared_ptr<const ServedDirectory>&) const { return {S_IFDIR | 0755, 0}; }
        Shape operator()(const std::shared_ptr<const ServedLink>& link) const {
            return {S_IFLNK | 0777, link->target.size()};
        }
    };
    return std::visit(Visitor{}, node);
}

struct stat attributes(fuse_ino_t number, const ServedNode& node) {
    const Shape shape = shapeOf(node);
    struct stat status {};
    status.st_ino = number;
    status.st_mode = shape.mode;
    status.st_nlink = 1;
    status.st_size = static_cast<off_t>(shape.bytes);
    return status;
}

void lookUp(fuse_req_t request, fuse_ino_t parent, const char* name) {
    ServedNodes& nodes = contentsOf(request).nodes;
    const auto* directory = nodes.findAs<ServedDirectory>(parent);
    const std::vector<ServedEntry> entries =
        directory == nullptr ? std::vector<ServedEntry>{} : directory->entries();
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const ServedEntry& e) { return e.name == name; });
    if (found == entries.end()) {
        fuse_reply_err(request, ENOENT);
        return;
    }
    fuse_entry_param entry{};
    entry.ino = nodes.look(found->node);
    entry.attr = attributes(entry.ino, found->node);
    if (fuse_reply_entry(request, &entry) != 0) {
        nodes.forget(entry.ino, 1);
    }
}

void forget(fuse_req_t request, fuse_ino_t node, std::uint64_t looks) {
    contentsOf(request).nodes.forget(node, looks);
    fuse_reply_none(request);
}

void getAttributes(fuse_req_t request, fuse_ino_t number, fuse_file_info*) {
    const ServedNode* node = contentsOf(request).nodes.find(number);
    if (node == nullptr) {
        fuse_reply_err(request, ENOENT);
        return;
    }
    const struct stat status = attributes(number, *node);
    fuse_reply_attr(request, &status, 0);
}

void setAttributes(fuse_req_t request, fuse_ino_t node, struct stat*, int, fuse_file_info* info) {
    // A device has no length to cut: shells open it with O_TRUNC.
    getAttributes(request, node, info);
}

void readLink(fuse_req_t request, fuse_ino_t node) {
    if (const auto* link = contentsOf(request).nodes.findAs<ServedLink>(node)) {
        fuse_reply_readlink(request, link->target.c_str());
    } else {
        fuse_reply_err(request, EINVAL);
    }
}

void openDirectory(fuse_req_t request, fuse_ino_t node, fuse_file_info* info) {
    FuseContents& contents = contentsOf(request);
    const auto* directory = contents.nodes.findAs<ServedDirectory>(node);
    if (directory == nullptr) {
        fuse_reply_err(request, ENOTDIR);
        return;
    }
    // Who lists it sees one moment of it, however many calls that takes.
    info->fh = ++contents.lastOpened;
    contents.directories.emplace(info->fh, directory->entries());
    if (fuse_reply_open(request, info) != 0) {
        contents.directories.erase(contents.lastOpened);
    }
}

void closeDirectory(fuse_req_t request, fuse_ino_t, fuse_file_info* info) {
    contentsOf(request).directories.erase(info->fh);
    fuse_reply_err(request, 0);
}

/// Offset 0 is before ".", 1 before "..", 2 before the first entry.
void readDirectory(fuse_req_t request, fuse_ino_t, size_t size, off_t offset, fuse_file_info* info) {
    constexpr fuse_ino_t kUnknownNumber = 0xFFFFFFFF;
    constexpr std::size_t kDots = 2;
    const std::vector<ServedEntry>& entries = contentsOf(request).directories.at(info->fh);
    std::vector<char> bytes(size);
    std::size_t used = 0;
    for (auto i = static_cast<std::size_t>(offset); i < kDots + entries.size(); ++i) {
        struct stat status {};
        status.st_ino = kUnknownNumber;
        status.st_mode = i < kDots ? S_IFDIR : shapeOf(entries[i - kDots].node).mode;
        const char* name = i == 0 ? "." : i == 1 ? ".." : entries[i - kDots].name.c_str();
        const std::size_t needed = fuse_add_direntry(request, bytes.data() + used, size - used, name, &status,
                                                     static_cast<off_t>(i + 1));
        if (needed > size - used) {
            break;
        }
        used += needed;
    }
    fuse_reply_buf(request, bytes.data(), used);
}

}  // namespace

void addTreeRequests(fuse_lowlevel_ops& table) {
    table.lookup = lookUp;
    table.forget = forget;
    table.getattr = getAttributes;
    table.setattr = setAttributes;
    table.readlink = readLink;
    table.opendir = openDirectory;
    table.releasedir = closeDirectory;
    table.readdir = readDirectory;
    // As sysfs refuses them.
    table.mknod = [](fuse_req_t request, fuse_ino_t, const char*, mode_t, dev_t) {
        fuse_reply_err(request, EACCES);
    };
    table.mkdir = [](fuse_req_t request, fuse_ino_t, const char*, mode_t) { fuse_reply_err(request, EPERM); };
    table.unlink = [](fuse_req_t request, fuse_ino_t, const char*) { fuse_reply_err(request, EPERM); };
    table.rmdir = [](fuse_req_t request, fuse_ino_t, const char*) { fuse_reply_err(request, EPERM); };
}

}  // namespace boardsim
