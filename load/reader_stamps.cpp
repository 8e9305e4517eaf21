#include "load/reader_stamps.h"

#include <optional>

#include "common/platform/file_stamp.h"
#include "load/office_place.h"

namespace zorvane {

std::string StampText(const std::string& file) {
    const std::optional<FileStamp> stamp = FileStampOf(file);
    std::string text = file + "=";
    if (stamp)
        text += std::to_string(stamp->size) + " " + std::to_string(stamp->modified) + " " +
                std::to_string(stamp->file);
    return text + "\n";
}

std::string ReaderStamps(const std::string& program_folder) {
    // The library that reads PDF is the system's, and updated by it.
    std::string text = StampText(ZORVANE_PDF_LIBRARY);
    for (const char* part : {"/zorvane-convert", "/zorvane-convert-pdf.so"})
        text += StampText(program_folder + part);
    const std::optional<OfficePlace> office = FindOffice();
    if (!office)
        return text;
    for (const char* part : {"/soffice.bin", "/libmergedlo.so", "/versionrc"})
        text += StampText(office->program_folder + part);
    return text;
}

}  // namespace zorvane
