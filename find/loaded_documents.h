// The documents of a search, read by this program's loaders.
#pragma once

#include <string>
#include <string_view>

#include "find/engine/find_run.h"
#include "load/extracted_texts.h"

namespace zorvane {

class LoadedDocuments : public DocumentTexts {
  public:
    LoadedDocuments(ProcessState& process, TextCache cache);
    /// The user's own cache.
    explicit LoadedDocuments(ProcessState& process);

    void UsePasswords(const std::vector<std::string>& passwords) override {
        texts_.UsePasswords(passwords);
    }

    bool IsDocument(std::string_view name) override { return IsReadAsDocument(name); }
    Text TextOf(const std::string& path, const std::function<bool()>& stop) override;

  private:
    ExtractedTexts texts_;
};

}  // namespace zorvane
