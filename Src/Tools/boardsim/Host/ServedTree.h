#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "Tools/boardsim/Host/ActingFile.h"

namespace boardsim {

/// A file of a tree. `open` is called for each open() of a program, as that of an ActingFile is.
struct ServedFile {
    std::function<FileCalls()> open;
    std::size_t bytes = 0;  ///< its size; reads need not agree with it
    /// What the file may be opened for: without any read bit not for reading, without any write bit not for
    /// writing (EACCES), whoever asks.
    mode_t mode = 0666;
};

struct ServedLink {
    std::string target;
};

struct ServedDirectory;

/// Who looks twice and gets the same pointer has seen the same file: it keeps its identity for programs.
using ServedNode = std::variant<std::shared_ptr<const ServedFile>, std::shared_ptr<const ServedDirectory>,
                                std::shared_ptr<const ServedLink>>;

struct ServedEntry {
    std::string name;
    ServedNode node;
};

/// A directory whose entries may come and go. `entries` is called whenever a program looks at it. Programs
/// cannot make, remove or rename anything in it.
struct ServedDirectory {
    std::function<std::vector<ServedEntry>()> entries;
};

/// A directory tree and where the program finds it. What is open when an entry goes stays open; its
/// functions answer on.
struct ServedTree {
    std::string path;
    std::shared_ptr<const ServedDirectory> root;
};

/// A directory with files and trees in it, each under its actingName() among them all.
std::shared_ptr<const ServedDirectory> servedRoot(const std::vector<ActingFile>& files,
                                                  const std::vector<ServedTree>& trees);

}  // namespace boardsim
