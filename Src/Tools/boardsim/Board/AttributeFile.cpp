#include "Tools/boardsim/Board/AttributeFile.h"

#include "Tools/boardsim/Models/FileAnswer.h"

namespace boardsim {
namespace {

constexpr std::size_t kPage = 4096;

mode_t modeOf(const TextAttribute& attribute) {
    const mode_t readable = attribute.show ? 0444 : 0;
    return attribute.store ? readable | 0200 : readable;
}

FileCalls callsOf(const TextAttribute& attribute) {
    FileCalls calls;
    if (attribute.show) {
        calls.read = [show = attribute.show, text = std::make_shared<std::string>()](
                         std::uint64_t offset, std::span<std::byte> into) {
            if (offset == 0) {
                *text = show();
            }
            return Transfer{readContents(std::as_bytes(std::span(*text)), offset, into).count};
        };
    }
    if (attribute.store) {
        calls.write = [store = attribute.store](std::uint64_t, std::span<const std::byte> bytes) {
            const std::errc error = store({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
            return error == std::errc{} ? Transfer{bytes.size()} : Transfer{0, error};
        };
    }
    return calls;
}

}  // namespace

std::shared_ptr<const ServedFile> attributeFile(TextAttribute attribute, const std::string& name,
                                                const Tell& tell) {
    const mode_t mode = modeOf(attribute);
    return std::make_shared<const ServedFile>(
        ServedFile{[=, attribute = std::move(attribute)] { return traced(name, callsOf(attribute), tell); },
                   kPage, mode});
}

std::shared_ptr<const ServedDirectory> plainDirectory(std::vector<ServedEntry> entries) {
    return std::make_shared<const ServedDirectory>(
        ServedDirectory{[entries = std::move(entries)] { return entries; }});
}

}  // namespace boardsim
