// A loader among fakes, with the real zorvane-convert (compile definition ZORVANE_CONVERTER).
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "common/process_state.h"
#include "compare/document/memory_editor.h"
#include "load/document_loader.h"
#include "tests/support/fakes.h"

namespace zorvane {

class FakeQuestions : public LoadQuestions {
  public:
    bool AskYesNo(const std::string& text, const std::string& title) override {
        asked.push_back(title + "|" + text);
        return answer;
    }
    void ShowMessage(const std::string& text, const std::string& title) override {
        shown.push_back(title + "|" + text);
    }
    std::string BrowseFor(Side) override { return picked; }
    void PumpEvents() override {}
    bool ShowNotice(const std::string& text, const std::string& title) override {
        shown.push_back(title + "|" + text);
        return answer;
    }
    void SetHourglass(bool on) override { hourglasses += on ? 1 : -1; }

    bool answer = false;
    std::string picked;
    std::vector<std::string> asked;
    std::vector<std::string> shown;
    int hourglasses = 0;
};

class LoaderFixture : public testing::Test {
  protected:
    LoaderFixture() {
        process_.telling.manner.sLogFile = system_.folder.Path("log");
        process_.telling.manner.bSilent = true;
        EXPECT_TRUE(options_.LoadStateFromFile(*profile_).ok());  // the defaults
        extensions_.Setup(15, *profile_, "x", "txt,log,csv");
        std::filesystem::create_directories(system_.folder.Path("program"));
        std::filesystem::create_symlink(ZORVANE_CONVERTER,
                                        system_.folder.Path("program/zorvane-convert"));
        for (clsMRU* list : {&recent_.original, &recent_.modified})
            list->Setup(10, *profile_, "r", "-1");
    }
    clsRTBDocument& DocumentOf(EditorTarget target) {
        auto [entry, fresh] = documents_.try_emplace(target);
        if (fresh)
            entry->second.Setup(editors_[target], *system_.platform.sound);
        return entry->second;
    }
    bool Load(std::string file, Side side = Side::Original, Reload reload = Reload::WhenChanged) {
        return loader_.LoadSide(side, file, reload);
    }
    bool Load(std::string_view name, std::string_view bytes) {
        return Load(system_.folder.Write(name, bytes));
    }
    std::string Text(EditorTarget target = EditorTarget::Original) {
        return ToUtf8(DocumentOf(target).RichTB().Text());
    }
    std::string Log() const { return system_.folder.Read("log"); }

    FakePlatform system_;
    ProcessState process_{system_.platform};
    clsCompareFileOptions options_;
    CompareFilesSettings settings_;
    FakeQuestions questions_;
    PerSide<clsMRU> recent_;
    clsMRU extensions_;
    std::vector<std::string> details_;  ///< of the status bar
    std::unique_ptr<IniProfile> profile_ = MakeMemoryIniProfile();
    std::map<EditorTarget, MemoryEditor> editors_;
    std::map<EditorTarget, clsRTBDocument> documents_;
    DocumentLoader loader_{
        {process_, process_.telling, options_, settings_, questions_, recent_, extensions_,
         [this](EditorTarget target) -> clsRTBDocument& { return DocumentOf(target); },
         [this](const std::string& detail) { details_.push_back(detail); }}};
};

}  // namespace zorvane
