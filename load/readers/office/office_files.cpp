#include "load/readers/office/office_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/mapped_file.h"
#include "load/readers/request_channel.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

constexpr std::array kFormats{
    OfficeFormat{"docx", "MS Word 2007 XML", OfficeDocumentKind::Text},
    OfficeFormat{"doc", "MS Word 97", OfficeDocumentKind::Text},
    OfficeFormat{"odt", "writer8", OfficeDocumentKind::Text},
    OfficeFormat{"rtf", "Rich Text Format", OfficeDocumentKind::Text},
    OfficeFormat{"xlsx", "Calc MS Excel 2007 XML", OfficeDocumentKind::Spreadsheet},
    OfficeFormat{"xls", "MS Excel 97", OfficeDocumentKind::Spreadsheet},
    OfficeFormat{"ods", "calc8", OfficeDocumentKind::Spreadsheet},
    OfficeFormat{"pptx", "Impress MS PowerPoint 2007 XML", OfficeDocumentKind::Presentation},
    OfficeFormat{"ppt", "MS PowerPoint 97", OfficeDocumentKind::Presentation},
    OfficeFormat{"odp", "impress8", OfficeDocumentKind::Presentation},
};

// The settings of a new profile. Without the type "generic_Text" the suite has no text import to
// fall back on, which would show the bytes of a damaged document as its text. The rest keeps what
// the document's author saw (no recalculation, no update of links or fields), runs nothing that a
// document brings, and leaves nothing behind. As a profile of a later version it spares the suite
// what it does for a new one (old settings looked for, the display tested): most of a first start.
constexpr std::string_view kSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Setup/Product"><prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>99.9</value></prop></item>
<item oor:path="/org.openoffice.TypeDetection.Types/Types"><node oor:name="generic_Text" oor:op="remove"/></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>0</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Field" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Formula/Load"><prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>1</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Formula/Load"><prop oor:name="ODFRecalcMode" oor:op="fuse"><value>1</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="UseLocking" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Save/Document"><prop oor:name="GenerateThumbnail" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/History"><prop oor:name="PickListSize" oor:op="fuse"><value>0</value></prop></item>
<item oor:path="/org.openoffice.Office.Recovery/AutoSave"><prop oor:name="Enabled" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)";

bool MakeFolder(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    return fs::is_directory(path, error);
}

/// Empties a folder of the session.
bool MakeEmpty(const fs::path& path) {
    std::error_code error;
    fs::remove_all(path, error);
    return MakeFolder(path);
}

bool IsUnreserved(char byte) {
    return IsAsciiLetter(byte) || IsAsciiDigit(byte) || byte == '-' || byte == '_' || byte == '.' ||
           byte == '/';
}

/// The suite takes names as UTF-8 and ends no line in them; any other document gets a plain name.
std::string NameInside(const fs::path& source) {
    constexpr std::size_t kLongestName = 200;
    std::string name = source.filename().string();
    const bool printable = std::all_of(name.begin(), name.end(), [](char character) {
        return static_cast<unsigned char>(character) >= 0x20;
    });
    if (printable && name.size() <= kLongestName && IsValidUtf8(name) && !name.starts_with('-'))
        return name;
    const std::string extension = source.extension().string();
    constexpr std::size_t kLongestExtension = 8;
    return extension.size() <= kLongestExtension && IsValidUtf8(extension) ? "document" + extension
                                                                           : "document";
}

}  // namespace

const OfficeFormat* FindOfficeFormat(std::string_view name) {
    for (const OfficeFormat& format : kFormats) {
        if (format.name == name)
            return &format;
    }
    return nullptr;
}

bool HasPartFor(const OfficePlace& place, OfficeDocumentKind kind) {
    switch (kind) {
        case OfficeDocumentKind::Text:
            return place.has_writer;
        case OfficeDocumentKind::Spreadsheet:
            return place.has_calc;
        case OfficeDocumentKind::Presentation:
            return place.has_impress;
        case OfficeDocumentKind::Other:
            break;
    }
    return false;
}

std::string FileUrl(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char character : path) {
        if (IsUnreserved(character)) {
            url += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        url += '%';
        url += kDigits[byte >> 4];
        url += kDigits[byte & 15U];
    }
    return url;
}

OfficeFolder::OfficeFolder(const std::string& path) {
    std::error_code error;
    path_ = fs::absolute(path, error).lexically_normal();
    if (!path_.has_filename())
        path_ = path_.parent_path();
}

bool OfficeFolder::Prepare() const {
    const fs::path user = path_ / "user";
    if (!MakeFolder(user) || !MakeFolder(Temporary()))
        return false;
    const fs::path settings = user / "registrymodifications.xcu";
    std::error_code error;
    if (fs::exists(settings, error))
        return true;
    std::ofstream file(settings, std::ios::binary);
    file << kSettings;
    file.close();
    return file.good();
}

ReadEnd OfficeFolder::Offer(const OfficeTask& task, std::string& path) const {
    const Result<MappedFile> document = MappedFile::Of(task.document);
    if (!document.ok())
        return ReadEnd::Fault(ReadError::CannotOpen, "The file cannot be opened.");
    // The suite shows an empty file as an empty document, whatever its kind.
    if (document.value().Bytes().empty())
        return ReadEnd::Fault(ReadError::Damaged, "The file is empty.");
    const fs::path incoming = path_ / "source";
    if (!MakeEmpty(incoming) || !MakeEmpty(ResultFolder()))
        return ReadEnd::Fault(ReadError::CannotWrite, "There is no temporary folder.");
    path = incoming / NameInside(fs::path(task.name).filename());
    const Status copied = WriteWholeFile(path, document.value().Bytes());
    return copied.ok() ? ReadEnd::Ok()
                       : ReadEnd::Fault(ReadError::CannotWrite, copied.failure().reason);
}

ReadEnd OfficeFolder::Deliver(const OfficeTask& task) const {
    std::error_code error;
    const fs::directory_iterator first(ResultFolder(), error);
    if (error || first == fs::directory_iterator{})
        return ReadEnd::Fault(ReadError::Damaged, "The office suite could not read it.");
    const Result<MappedFile> result = MappedFile::Open(first->path());
    if (!result.ok())
        return ReadEnd::Fault(ReadError::CannotWrite, result.failure().reason);
    return WriteBytes(task.answer, result.value().Bytes())
               ? ReadEnd::Ok()
               : ReadEnd::Fault(ReadError::CannotWrite, std::strerror(errno));
}

}  // namespace zorvane
