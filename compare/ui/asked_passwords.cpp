#include "compare/ui/asked_passwords.h"

#include <algorithm>

namespace zorvane {
namespace {

// PDF documents share two passwords, and each is tried on both.
std::string& PdfPassword(frmCompareFiles& viewer, Side side) {
    CompareFilesSettings& settings = viewer.Settings();
    return side == Side::Original ? settings.sBCLPasswordUser : settings.sBCLPasswordOwner;
}

clsVarString& Password(frmCompareFiles& viewer, FileTypeOptions type, Side side) {
    clsCompareFileOptions& options = viewer.Options();
    if (type == FileTypeOptions::Spreadsheet)
        return side == Side::Original ? options.sExcelPasswordOriginal
                                      : options.sExcelPasswordModified;
    return side == Side::Original ? options.sDOCPassword_TO_Original
                                  : options.sDOCPassword_TO_Modified;
}

std::string Stored(frmCompareFiles& viewer, FileTypeOptions type, Side side) {
    return type == FileTypeOptions::Pdf ? PdfPassword(viewer, side)
                                        : Password(viewer, type, side).Data();
}

void Store(frmCompareFiles& viewer, FileTypeOptions type, Side side, const std::string& password) {
    if (type == FileTypeOptions::Pdf)
        PdfPassword(viewer, side) = password;
    else
        Password(viewer, type, side).SetData(password);
}

}  // namespace

bool AskedPasswords::Takes(FileTypeOptions type) {
    return type == FileTypeOptions::Word || type == FileTypeOptions::Spreadsheet ||
           type == FileTypeOptions::Pdf;
}

void AskedPasswords::Give(frmCompareFiles& viewer, Side side, FileTypeOptions type,
                          const std::string& password) {
    given_for_[side] = viewer.ChosenFile(side);
    const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) {
        return kept.type == type && kept.side == side;
    });
    if (found == kept_.end())
        kept_.push_back({type, side, Stored(viewer, type, side), password});
    else
        found->given = password;
    Store(viewer, type, side, password);
}

bool AskedPasswords::WasGiven(frmCompareFiles& viewer, Side side) const {
    return !given_for_[side].empty() && given_for_[side] == viewer.ChosenFile(side);
}

void AskedPasswords::TakeBack(frmCompareFiles& viewer) {
    for (const Kept& kept : kept_) {
        if (Stored(viewer, kept.type, kept.side) == kept.given)
            Store(viewer, kept.type, kept.side, kept.before);
    }
    kept_.clear();
}

}  // namespace zorvane
