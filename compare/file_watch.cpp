#include "compare/file_watch.h"

#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr std::uint32_t kBetweenLooks = 1000;  // milliseconds
constexpr std::uint32_t kStill = 1500;

}  // namespace

void FileWatch::Watch(Side side, const std::string& path, std::optional<FileStamp> stamp) {
    watched_[side] = {};
    if (!stamp)
        return;
    watched_[side].path = path;
    watched_[side].loaded = watched_[side].told = watched_[side].seen = stamp;
}

std::optional<FileNews> FileWatch::NewsOf(Watched& file, std::uint32_t now) const {
    const Stamp stamp = read_(file.path);
    if (stamp == file.loaded)
        file.told = stamp;  // a network drive came back, or an old file was put back
    if (stamp != file.seen) {
        file.seen = stamp;
        file.seen_since = now;
    }
    if (stamp == file.told || now - file.seen_since < kStill)
        return std::nullopt;
    file.told = stamp;
    return stamp ? FileNews::Changed : FileNews::Gone;
}

std::vector<FileNotice> FileWatch::Poll(std::uint32_t now) {
    std::vector<FileNotice> notices;
    if (has_looked_ && now - looked_ < kBetweenLooks)
        return notices;
    has_looked_ = true;
    looked_ = now;
    for (const Side side : kBothSides) {
        Watched& file = watched_[side];
        const std::optional<FileNews> news = file.path.empty() ? std::nullopt : NewsOf(file, now);
        if (!news)
            continue;
        if (notices.empty() || notices.back().path != file.path)
            notices.push_back({file.path, *news, {false, false}});
        notices.back().sides[side] = true;
    }
    return notices;
}

WindowQuestion QuestionOf(ProcessState& process, const FileNotice& notice, bool unsaved) {
    WindowQuestion question;
    question.title = process.Translate("File on disk");
    question.text = notice.path + "\r\n\r\n";
    if (notice.news == FileNews::Gone) {
        question.text += process.Translate(
            "This file is no longer on the disk. The text in the window is what was read last.");
        question.icon = MessageIcon::Warning;
        question.answers = {process.Translate("OK")};
        return question;
    }
    question.text += process.Translate("This file was changed by another program. Load it again?");
    if (unsaved)
        question.text +=
            "\r\n" + process.Translate("What you have edited here and not saved would be lost.");
    question.answers = {process.Translate("Load again"), process.Translate("Keep this text")};
    question.first = unsaved ? 1 : 0;
    question.safe = 1;
    return question;
}

}  // namespace zorvane
