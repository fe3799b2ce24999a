#include "Tools/boardsim/Host/ServedTree.h"

#include "Tools/boardsim/Host/World.h"

namespace boardsim {

std::shared_ptr<const ServedDirectory> servedRoot(const std::vector<ActingFile>& files,
                                                  const std::vector<ServedTree>& trees) {
    std::vector<ServedEntry> entries;
    entries.reserve(files.size() + trees.size());
    for (const ActingFile& file : files) {
        entries.push_back(
            {actingName(entries.size()), std::make_shared<const ServedFile>(ServedFile{file.open})});
    }
    for (const ServedTree& tree : trees) {
        entries.push_back({actingName(entries.size()), tree.root});
    }
    return std::make_shared<const ServedDirectory>(
        ServedDirectory{[entries = std::move(entries)] { return entries; }});
}

}  // namespace boardsim
