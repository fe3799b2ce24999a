#include "Tools/overlayview/View.h"

#include <algorithm>
#include <string>

#include "Tools/overlayview/FontFormat.h"
#include "Tools/overlayview/GlyphSheet.h"
#include "Tools/overlayview/KindGuess.h"
#include "Tools/overlayview/NumberFormat.h"
#include "Tools/overlayview/Pattern.h"
#include "Tools/overlayview/PictureSize.h"

namespace overlayview {
namespace {

void viewRuns(const Container& container, const Request& request, View& view) {
    const RunLengths runs(container.body());
    runs.report(view.description.findings);
    view.description.runs = runs.facts();
    view.description.pixels = runs.facts().pixels;
    view.description.colours = runs.facts().colours;
    view.description.paddingBytes = runs.facts().paddingWords * kWordBytes;
    view.description.size = sizeOfRuns(runs.facts().pixels, request, view.description.findings);
    if (request.wantsPicture && view.description.size) {
        view.picture = runs.picture(*view.description.size, request.order);
    }
}

void viewPattern(const Container& container, const Request& request, View& view) {
    const Bytes body = container.body();
    const Pattern pattern(body);
    const std::optional<Size> size = sizeOfPattern(container, request, view.description.findings);
    const std::uint64_t stored = body.size() / Pattern::kPixelBytes;
    const std::uint64_t pixels = size ? std::min(stored, size->pixels()) : stored;
    view.description.size = size;
    view.description.pixels = pixels;
    view.description.colours = pattern.colours(pixels);
    if (size) {
        view.description.paddingBytes = body.size() - pixels * Pattern::kPixelBytes;
    }
    if (request.wantsPicture && size) {
        view.picture = pattern.picture(*size, request.order);
    }
}

void viewSheet(const Container& container, const GlyphFormat& format, const Request& request, View& view) {
    Findings& findings = view.description.findings;
    if (!request.sheet) {
        findings.lacking.emplace_back("say how the characters lie: --cell WIDTHxHEIGHT --columns N");
        return;
    }
    const SheetLayout& layout = *request.sheet;
    if (layout.cell.width > format.mostWidth()) {
        findings.lacking.push_back("characters of this kind are at most " +
                                   std::to_string(format.mostWidth()) +
                                   " pixels wide: another --cell or --as");
        return;
    }
    if (!format.keepsAll(layout.cell.width)) {
        findings.notes.emplace_back(
            "files of this kind do not keep all pixels of such cells; multiples of 32 are whole");
    }
    const GlyphSheet sheet(format, container.file, container.bodyOffset, layout);
    if (sheet.pixels() > kMostPixels || !isDrawable(sheet.size())) {
        findings.lacking.push_back("a sheet of " + std::to_string(sheet.pixels()) +
                                   " pixels is too large: another --cell or --columns");
        return;
    }
    if (sheet.rows() == 0) {
        findings.lacking.emplace_back("there are no characters to draw");
        return;
    }
    view.description.pixels = sheet.pixels();
    view.description.size = sheet.size();
    if (request.wantsPicture) {
        view.picture = sheet.picture();
    }
}

void viewBody(const Container& container, const Request& request, View& view) {
    static const FontFormat font;
    static const NumberFormat numbers;
    switch (view.description.kind) {
        case Kind::Runs:
            return viewRuns(container, request, view);
        case Kind::Pattern:
            return viewPattern(container, request, view);
        case Kind::Font:
            return viewSheet(container, font, request, view);
        case Kind::Numbers:
            return viewSheet(container, numbers, request, view);
        case Kind::Unknown:
            view.description.findings.lacking.emplace_back(
                "the file does not tell what it holds: say --as rle, pattern, font or numbers");
    }
}

}  // namespace

View look(Bytes file, const Request& request) {
    View view;
    Description& description = view.description;
    const Container container = request.rawOffset ? openRaw(file, *request.rawOffset, description.findings)
                                                  : openContainer(file, description.findings);
    description.fileBytes = file.size();
    description.header = container.header;
    description.bodyBytes = container.body().size();
    description.kind = request.kind == Kind::Unknown ? guessKind(container, request) : request.kind;
    viewBody(container, request, view);
    return view;
}

}  // namespace overlayview
