// Ties the fields of a dialog to a copy of what it edits. Nothing is written before `Take`.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include "common/platform/native_path.h"
#include "common/ui/qt_text.h"
#include "options/option_values.h"

namespace zorvane {

/// The values live as long as the fields.
class FieldTies {
  public:
    /// Told when a person changed a field, with all values as the fields now stand.
    std::function<void()> changed;

    void Tie(QAbstractButton& box, bool& value) {
        Add([&] { box.setChecked(value); }, [&] { value = box.isChecked(); });
        QObject::connect(&box, &QAbstractButton::toggled, &box, [this] { Changed(); });
    }
    void Tie(QAbstractButton& box, clsVarBoolean& value) {
        Add([&] { box.setChecked(value.Data()); }, [&] { value.SetData(box.isChecked()); });
        QObject::connect(&box, &QAbstractButton::toggled, &box, [this] { Changed(); });
    }
    void Tie(QLineEdit& line, std::string& value) {
        Add([&] { line.setText(ToQt(value)); }, [&] { value = FromQt(line.text()); });
    }
    /// Shown in the system's form; a value that nobody changed stays as it was written.
    void TiePath(QLineEdit& line, std::string& value) {
        Add([&] { line.setText(ToQt(NativePath(value))); },
            [&] {
                if (const std::string path = FromQt(line.text()); path != NativePath(value))
                    value = path;
            });
    }
    void Tie(QLineEdit& line, clsVarString& value) {
        Add([&] { line.setText(ToQt(value.Data())); }, [&] { value.SetData(FromQt(line.text())); });
    }
    void Tie(QSpinBox& box, std::int32_t& value) {
        Add([&] { box.setValue(value); }, [&] { value = box.value(); });
        QObject::connect(&box, &QSpinBox::valueChanged, &box, [this] { Changed(); });
    }
    void Tie(QSpinBox& box, clsVarLong& value) {
        Add([&] { box.setValue(value.Data()); }, [&] { value.SetData(box.value()); });
        QObject::connect(&box, &QSpinBox::valueChanged, &box, [this] { Changed(); });
    }
    void Tie(QComboBox& box, std::int32_t& value) {
        Add([&] { box.setCurrentIndex(value); }, [&] { value = box.currentIndex(); });
    }
    /// The buttons' ids are the values; one that is no id leaves all off.
    void Tie(QButtonGroup& group, std::int32_t& value) {
        Add(
            [&] {
                if (QAbstractButton* button = group.button(value))
                    button->setChecked(true);
            },
            [&] { value = group.checkedId() < 0 ? value : group.checkedId(); });
        QObject::connect(&group, &QButtonGroup::idToggled, &group, [this] { Changed(); });
    }

    /// Shows the values.
    void Show() {
        showing_ = true;
        for (const auto& show : shows_)
            show();
        showing_ = false;
        Changed();
    }
    void Take() const {
        for (const auto& take : takes_)
            take();
    }

  private:
    void Add(std::function<void()> show, std::function<void()> take) {
        shows_.push_back(std::move(show));
        takes_.push_back(std::move(take));
    }
    void Changed() {
        if (showing_ || !changed)
            return;
        Take();
        changed();
    }

    std::vector<std::function<void()>> shows_;
    std::vector<std::function<void()>> takes_;
    bool showing_ = false;
};

}  // namespace zorvane
