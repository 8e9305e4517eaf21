// One document loaded where nobody can be asked and nothing is told but to the caller.
#pragma once

#include <memory>
#include <string>

#include "common/log_message.h"
#include "compare/document/memory_editor.h"
#include "load/document_loader.h"

namespace zorvane {

/// Options are the defaults, whatever the user's are, so that the same document always gives the
/// same text. Of one thread; `process` outlives it.
class SilentLoad {
  public:
    enum class Formats { Dropped, Kept };

    SilentLoad(ProcessState& process, Formats formats);
    ~SilentLoad();

    /// Of documents that ask for one.
    void UsePassword(const std::string& password);
    /// Into the editor; false: `Reason`.
    bool Load(const std::string& path, ConversionService& service, RunWatcher& watcher);
    MemoryEditor& Editor() { return editor_; }
    /// In a user's words.
    std::string Reason();
    SideType Type(const std::string& path) const;

  private:
    class Nobody;

    ProcessState& process_;
    MessageSink sink_;
    RunTelling telling_;
    std::unique_ptr<IniProfile> profile_;
    clsCompareFileOptions options_;
    CompareFilesSettings settings_;
    std::unique_ptr<Nobody> questions_;
    PerSide<clsMRU> recent_;
    clsMRU extensions_;
    MemoryEditor editor_;
    clsRTBDocument document_;
};

}  // namespace zorvane
