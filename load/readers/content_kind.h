// What a file holds, told by its bytes; its name decides only where the bytes do not.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/container/package.h"

namespace zorvane {

enum class ContentKind {
    Text,
    Rtf,
    Html,
    Xml,
    Markdown,
    Message,  ///< an e-mail
    Pdf,
    WordPackage,   ///< DOCX and its kin
    SheetPackage,  ///< XLSX and its kin
    SlidePackage,  ///< PPTX and its kin
    OpenText,      ///< ODT and its kin
    OpenSheet,
    OpenSlides,
    Epub,
    OtherPackage,      ///< a ZIP file that is no document
    BrokenPackage,     ///< begins as a ZIP file and is none
    EncryptedPackage,  ///< Office Open XML behind a password
    BinaryWord,        ///< DOC in a compound file
    BinarySheet,
    BinarySlides,
    OtherCompound,
    OtherBinary
};

/// `package` is filled for every kind of ZIP file. `name` is the user's file.
ContentKind KindOfContent(std::string_view bytes, std::string_view name,
                          std::unique_ptr<Package>& package);

}  // namespace zorvane
