#include "Tools/boardsim/Board/Json/BoardJson.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "Tools/boardsim/Board/Json/BoardCheck.h"
#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::size_t kLargestFile = 1 << 20;

}  // namespace

BoardDescription readBoard(std::string_view text, const std::string& name) {
    try {
        if (text.size() > kLargestFile) {
            throw JsonError(1, "the description is larger than 1 MiB");
        }
        const JsonValue root = parseJson(text);
        return record<BoardDescription>(checkBoard).read(JsonPlace(root));
    } catch (const JsonError& error) {
        throw std::invalid_argument(name + ":" + std::to_string(error.line()) + ": " + error.what());
    }
}

BoardDescription readBoardFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(kLargestFile + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file && !file.eof()) {
        throw std::invalid_argument(path + ": " + std::strerror(errno));
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return readBoard(text, path);
}

std::string writeBoard(const BoardDescription& board) {
    return printJson(writeFields(board)) + "\n";
}

std::string writeBoards(std::span<const BoardDescription> boards) {
    JsonList list;
    for (const BoardDescription& board : boards) {
        list.push_back(writeFields(board));
    }
    return printJson({JsonObject{{"boards", {std::move(list)}}}}) + "\n";
}

}  // namespace boardsim
