#include <algorithm>
#include <exception>
#include <iostream>
#include <stdexcept>

#include "Tools/overlayview/CommandLine.h"
#include "Tools/overlayview/ExitStatus.h"
#include "Tools/overlayview/Files.h"
#include "Tools/overlayview/Png.h"
#include "Tools/overlayview/View.h"

namespace {

using namespace overlayview;

/// With the picture on standard output the description goes to standard error.
void tell(const Options& options, const View& view) {
    std::ostream& out = options.pictureFile == "-" ? std::cerr : std::cout;
    out << (options.json ? asJson(options.file, view.description) : asText(options.file, view.description))
        << std::flush;
    if (!out) {
        throw std::runtime_error("the description cannot be written");
    }
}

int sayWhatIsLacking(const Findings& findings) {
    for (const std::string& sentence : findings.lacking) {
        std::cerr << "overlayview: no picture: " << sentence << "\n";
    }
    return kUsageError;
}

int show(const Options& options) {
    const std::vector<std::byte> file = readFile(options.file);
    const View view = look(file, options.request);
    tell(options, view);
    if (view.picture) {
        writeFile(options.pictureFile, encodePng(*view.picture));
    } else if (options.request.wantsPicture) {
        return sayWhatIsLacking(view.description.findings);
    }
    return view.description.findings.damage.empty() ? kGood : kDamaged;
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine commandLine = readCommandLine({argv + std::min(argc, 1), argv + argc});
    if (!commandLine.options) {
        return commandLine.status;
    }
    try {
        return show(*commandLine.options);
    } catch (const std::exception& error) {
        std::cerr << "overlayview: " << error.what() << "\n";
        return kFileError;
    }
}
