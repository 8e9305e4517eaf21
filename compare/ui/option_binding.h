// Controls that show a value of the options or settings and change it at once.
#pragma once

#include <functional>
#include <vector>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include "common/platform/native_path.h"
#include "common/ui/qt_text.h"

namespace zorvane {

/// Ties controls to values by a reader and a writer each. The page that owns it tells when values
/// changed elsewhere.
class OptionBinding {
  public:
    /// Told after a person changed a value.
    std::function<void()> changed;

    void Check(QAbstractButton* box, std::function<bool()> read, std::function<void(bool)> write) {
        shows_.push_back([box, read] { box->setChecked(read()); });
        // A screen reader turns a box over without a click; what `Show` does is no change.
        QObject::connect(box, &QAbstractButton::toggled, box,
                         [this, read = std::move(read), write = std::move(write)](bool on) {
                             if (on != read())
                                 Write([&] { write(on); });
                         });
    }
    void Text(QLineEdit* line, std::function<std::string()> read,
              std::function<void(const std::string&)> write) {
        shows_.push_back([line, read = std::move(read)] {
            if (!line->hasFocus())
                line->setText(ToQt(read()));
        });
        QObject::connect(line, &QLineEdit::textEdited, line,
                         [this, write = std::move(write)](const QString& text) {
                             Write([&] { write(FromQt(text)); });
                         });
    }
    /// A path is shown in the system's form, whatever separators its value has.
    void Path(QLineEdit* line, std::function<std::string()> read,
              std::function<void(const std::string&)> write) {
        Text(
            line, [read = std::move(read)] { return NativePath(read()); }, std::move(write));
    }
    void Number(QSpinBox* box, std::function<int()> read, std::function<void(int)> write) {
        shows_.push_back([box, read = std::move(read)] {
            const QSignalBlocker silent(box);
            box->setValue(read());
        });
        QObject::connect(
            box, &QSpinBox::valueChanged, box,
            [this, write = std::move(write)](int value) { Write([&] { write(value); }); });
    }
    void Choice(QComboBox* box, std::function<int()> read, std::function<void(int)> write) {
        shows_.push_back([box, read = std::move(read)] {
            const QSignalBlocker silent(box);
            box->setCurrentIndex(read());
        });
        QObject::connect(box, &QComboBox::activated, box,
                         [this, write = std::move(write)](int at) { Write([&] { write(at); }); });
    }
    void Add(std::function<void()> show) { shows_.push_back(std::move(show)); }
    /// Shows the values as they are now.
    void Show() const {
        for (const std::function<void()>& show : shows_)
            show();
    }
    template <class Change>
    void Write(const Change& change) {
        change();
        if (changed)
            changed();
    }

  private:
    std::vector<std::function<void()>> shows_;
};

}  // namespace zorvane
