// The options of reports, one tab for each of their types.
#pragma once

#include <functional>

#include <QStackedWidget>

#include "common/base/side.h"
#include "common/ui/bars.h"
#include "common/ui/dialog.h"
#include "common/ui/path_field.h"
#include "compare/ui/field_ties.h"
#include "options/compare_files_settings.h"

namespace zorvane {

class ReportOptionsDialog : public Dialog {
  public:
    /// Of a tab: asks for the file of a report, beginning with a path.
    using AskPath =
        std::function<QString(const QString& title, const QString& filter, const QString& start)>;
    /// `file_names` stand where a title of a column is left out.
    ReportOptionsDialog(const CompareFilesSettings& settings, const PerSide<QString>& file_names,
                        AskPath ask, UiText text, QWidget* parent);
    const CompareFilesSettings& Settings() const { return settings_; }
    TabStrip& Tabs() { return *tabs_; }

  protected:
    bool Check() override;

  private:
    FormColumn* AddTab(const char* title);
    void AddPath(FormColumn& column, const char* caption, const char* type, std::string& path);
    void MakeDocument();
    void MakeHtml(const PerSide<QString>& file_names);
    void MakePlain(const char* title, const char* type, std::string& path);

    CompareFilesSettings settings_;
    AskPath ask_;
    UiText text_;
    FieldTies ties_;
    TabStrip* tabs_;
    QStackedWidget* pages_;
    std::vector<PathField*> paths_;  ///< one a tab
};

}  // namespace zorvane
