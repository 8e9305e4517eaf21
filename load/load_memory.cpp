// What a load leaves for the next one.
#include "common/file_utilities.h"
#include "load/document_loader.h"

namespace zorvane {

// What two files of one kind differ in was put there by somebody; two kinds have little in common
// but the marks, and a PDF's looks are guessed from its page.
FormatDepth LoadMemory::FormattingDepth() const {
    const std::string& original = looks.original;
    const std::string& modified = looks.modified;
    if (original.empty() || modified.empty())
        return FormatDepth::None;
    const bool guessed = original == "PDF" || modified == "PDF";
    const auto family = [](const std::string& extension) {
        return ExtensionContains("." + extension, "DOC DOT") ? std::string("DOC") : extension;
    };
    return !guessed && family(original) == family(modified) ? FormatDepth::Full
                                                            : FormatDepth::Marks;
}

}  // namespace zorvane
