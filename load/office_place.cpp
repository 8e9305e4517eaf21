#include "load/office_place.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>
#include <vector>

namespace zorvane {
namespace {

namespace fs = std::filesystem;

bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool IsProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// Where the suite is one large library, the small one's name may be taken by a line of text.
bool IsLibrary(const fs::path& path) {
    constexpr std::uintmax_t kLongestNote = 100;
    std::error_code error;
    return fs::is_regular_file(path, error) && fs::file_size(path, error) > kLongestNote && !error;
}

/// Each part has a library of its own, but where all are one.
void FindParts(OfficePlace& place) {
    const fs::path folder(place.program_folder);
    const bool writer = Exists(folder / "libswlo.so");
    const bool calc = Exists(folder / "libsclo.so");
    const bool impress = Exists(folder / "libsdlo.so");
    if (!writer && !calc && !impress)
        return;
    place.has_writer = writer;
    place.has_calc = calc;
    place.has_impress = impress;
}

/// The library prepares a document as if to show it, and ends with a crash at comments or cells
/// where the descriptions of the windows were left out, as in packages for machines without a
/// display. Such a suite still converts as a program.
bool HasWindows(const OfficePlace& place) {
    constexpr std::ptrdiff_t kFewest = 10;  // of some 60 to 230
    const fs::path modules = fs::path(place.program_folder).parent_path() / "share" / "config" /
                             "soffice.cfg" / "modules";
    const auto lacks = [&](bool installed, const char* module) {
        std::error_code error;
        const fs::directory_iterator files(modules / module / "ui", error);
        return installed && std::distance(begin(files), end(files)) < kFewest;
    };
    return !Exists(modules) ||
           !(lacks(place.has_writer, "swriter") || lacks(place.has_calc, "scalc") ||
             lacks(place.has_impress, "simpress"));
}

std::optional<OfficePlace> PlaceAt(const fs::path& folder) {
    OfficePlace place;
    place.program_folder = folder.lexically_normal().string();
    if (place.program_folder.size() > 1 && place.program_folder.ends_with('/'))
        place.program_folder.pop_back();
    place.soffice = fs::path(place.program_folder) / "soffice";
    FindParts(place);
    place.has_library =
        (IsLibrary(folder / "libmergedlo.so") || IsLibrary(folder / "libsofficeapp.so")) &&
        HasWindows(place);
    if (!place.has_library && !IsProgram(place.soffice))
        return std::nullopt;
    return place;
}

/// A program on the search path is most often a link into the suite; else a script that starts it.
std::optional<OfficePlace> PlaceOfProgram(const fs::path& program) {
    if (!IsProgram(program))
        return std::nullopt;
    std::error_code error;
    const fs::path real = fs::canonical(program, error);
    if (!error) {
        std::optional<OfficePlace> place = PlaceAt(real.parent_path());
        if (place && (place->has_library || real.filename() == "soffice"))
            return place;
    }
    OfficePlace place;
    place.program_folder = program.parent_path().string();
    place.soffice = program.string();
    return place;
}

std::vector<std::string> FoldersBelow(const fs::path& parent, std::string_view prefix) {
    std::vector<std::string> folders;
    std::error_code error;
    for (fs::directory_iterator entry(parent, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename().string().starts_with(prefix))
            folders.push_back(entry->path() / "program");
    }
    // The newest first: by the numbers in the names, so that 24.2 comes before 7.6.
    std::sort(folders.begin(), folders.end(),
              [](const std::string& left, const std::string& right) {
                  return strverscmp(left.c_str(), right.c_str()) > 0;
              });
    return folders;
}

std::vector<std::string> UsualFolders() {
    std::vector<std::string> folders{"/usr/lib/libreoffice/program",
                                     "/usr/lib64/libreoffice/program",
                                     "/usr/local/lib/libreoffice/program"};
    for (std::string& folder : FoldersBelow("/opt", "libreoffice"))
        folders.push_back(std::move(folder));
    folders.emplace_back("/snap/libreoffice/current/lib/libreoffice/program");
    return folders;
}

std::string_view Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view{} : std::string_view{value};
}

}  // namespace

std::optional<OfficePlace> FindOfficeIn(std::span<const std::string> program_folders,
                                        std::string_view search_path) {
    for (const std::string& folder : program_folders) {
        if (std::optional<OfficePlace> place = PlaceAt(folder))
            return place;
    }
    while (!search_path.empty()) {
        const std::size_t end = std::min(search_path.find(':'), search_path.size());
        const fs::path folder(search_path.substr(0, end));
        search_path.remove_prefix(std::min(end + 1, search_path.size()));
        // Kept out: a folder told from the current one, where anybody may have put a program.
        if (!folder.is_absolute())
            continue;
        for (const char* name : {"soffice", "libreoffice"}) {
            if (std::optional<OfficePlace> place = PlaceOfProgram(folder / name))
                return place;
        }
    }
    return std::nullopt;
}

OfficePlace OfficeAt(const std::string& program_folder, const std::string& soffice,
                     bool has_library) {
    OfficePlace place;
    place.program_folder = program_folder;
    place.soffice = soffice;
    place.has_library = has_library;
    FindParts(place);
    return place;
}

std::optional<OfficePlace> FindOffice() {
    const std::string_view wish = Variable("ZORVANE_OFFICE");
    if (wish == "none")
        return std::nullopt;
    if (!wish.empty()) {
        const std::array<std::string, 1> only{std::string(wish)};
        return FindOfficeIn(only, {});
    }
    return FindOfficeIn(UsualFolders(), Variable("PATH"));
}

}  // namespace zorvane
