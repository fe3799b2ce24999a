#pragma once

#include <memory>

#include "Tools/boardsim/Board/FileTrace.h"
#include "Tools/boardsim/Host/ServedTree.h"
#include "Tools/boardsim/Models/TextAttribute.h"

namespace boardsim {

/// A text attribute as sysfs presents it: a page in size; who reads it from its beginning sees its contents
/// of that moment until he does so again; what is written is taken whole, wherever in the file.
/// @param name what it is called in the trace.
std::shared_ptr<const ServedFile> attributeFile(TextAttribute attribute, const std::string& name,
                                                const Tell& tell);

/// A directory whose entries stay what they are.
std::shared_ptr<const ServedDirectory> plainDirectory(std::vector<ServedEntry> entries);

}  // namespace boardsim
