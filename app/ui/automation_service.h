// The automation class on the session bus, as org.zorvane.Zorvane. docs/AUTOMATION.md tells clients
// how to use it.
#pragma once

#include <functional>
#include <set>

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include "app/automation.h"

namespace zorvane {

inline constexpr const char* kServiceName = "org.zorvane.Zorvane";
inline constexpr const char* kServicePath = "/org/zorvane/Zorvane";

/// Serves any number of clients, one line after the other. Goes away some time after the last of
/// them, unless a person looks at a window.
class AutomationService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.zorvane.clsZorvane")
    Q_PROPERTY(int NumDifferencesFound READ NumDifferencesFound)

  public:
    struct Rules {
        int linger = 60'000;  ///< milliseconds after the last client, who may call again
        std::function<bool()> person_looks;
        bool display = true;
    };

    /// The arguments outlive this object.
    AutomationService(ProcessState& process, frmMainMDI& frame, Rules rules);

    /// Takes the name on the bus. What stands in the way is told.
    Status Begin(QDBusConnection bus);
    int NumDifferencesFound() const { return automation_.NumDifferencesFound(); }

  public Q_SLOTS:
    /// Answers with the code and the line as the parser left it.
    Q_SCRIPTABLE int DoCommandLine(const QString& line, QString& read_line);
    /// The same for clients that expect failures as errors of the bus; answers with the count.
    Q_SCRIPTABLE int Run(const QString& line);
    /// The caller is done.
    Q_SCRIPTABLE void Release();

  Q_SIGNALS:
    /// A line was refused.
    Q_SCRIPTABLE void Refused(const QString& message, int code);

  private:
    enum class Answer { Code, Count };
    void Take(const QString& line, Answer answer);
    void Serve(const QString& line, Answer answer, const QDBusMessage& call);
    void Know(const QString& client);
    void Leave(const QString& client);
    void EndWhenUnused();

    clsZorvane automation_;
    Rules rules_;
    QDBusConnection bus_{QString()};
    QDBusServiceWatcher watcher_;
    QTimer linger_;
    std::set<QString> clients_;
    QString last_refusal_;
};

}  // namespace zorvane
