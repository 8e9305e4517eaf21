#include "app/ui/automation_service.h"

#include <utility>

#include <QDBusError>
#include <QDBusMessage>

#include "common/process_state.h"
#include "common/ui/qt_text.h"

namespace zorvane {
namespace {

// Room for the longest paths in every switch.
constexpr qsizetype kLongestLine = 65'536;

const char* ErrorNameOf(std::int32_t code) {
    switch (static_cast<AutomationResult>(code)) {
        case AutomationResult::Empty:
            return "org.zorvane.Error.Empty";
        case AutomationResult::Busy:
            return "org.zorvane.Error.Busy";
        case AutomationResult::Ran:
        case AutomationResult::Refused:
            break;
    }
    return "org.zorvane.Error.Refused";
}

}  // namespace

AutomationService::AutomationService(ProcessState& process, frmMainMDI& frame, Rules rules)
    : automation_(process, frame,
                  [this](const std::string& message, std::int32_t code) {
                      last_refusal_ = ToQt(message);
                      Q_EMIT Refused(last_refusal_, code);
                  }),
      rules_(std::move(rules)) {
    if (!rules_.display)
        automation_.KeepNoViewers();
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, &AutomationService::Leave);
    linger_.setSingleShot(true);
    linger_.setInterval(rules_.linger);
    connect(&linger_, &QTimer::timeout, this, &AutomationService::EndWhenUnused);
}

// The object comes first: a call may wait for the name.
Status AutomationService::Begin(QDBusConnection bus) {
    bus_ = std::move(bus);
    watcher_.setConnection(bus_);
    if (!bus_.isConnected())
        return Failure{"there is no session bus: " + FromQt(bus_.lastError().message())};
    constexpr auto kExported = QDBusConnection::ExportScriptableSlots |
                               QDBusConnection::ExportScriptableSignals |
                               QDBusConnection::ExportAllProperties;
    if (!bus_.registerObject(QString::fromLatin1(kServicePath), this, kExported) ||
        !bus_.registerService(QString::fromLatin1(kServiceName)))
        return Failure{std::string(kServiceName) + " is served by another process"};
    linger_.start();
    return Status::Ok();
}

int AutomationService::DoCommandLine(const QString& line, QString& /*read_line*/) {
    Take(line, Answer::Code);
    return 0;  // the answer follows
}

int AutomationService::Run(const QString& line) {
    Take(line, Answer::Count);
    return 0;
}

// In the event loop, so that no call of the bus stands below a run.
void AutomationService::Take(const QString& line, Answer answer) {
    if (!calledFromDBus())
        return;
    if (line.size() > kLongestLine) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("The command line is too long"));
        return;
    }
    setDelayedReply(true);
    Know(message().service());
    QMetaObject::invokeMethod(
        this, [this, line, answer, call = message()] { Serve(line, answer, call); },
        Qt::QueuedConnection);
}

void AutomationService::Serve(const QString& line, Answer answer, const QDBusMessage& call) {
    // Who wants no answer may be gone long before the run.
    const std::string caller = call.isReplyRequired() ? FromQt(call.service()) : std::string();
    if (!caller.empty() && !clients_.contains(call.service()))
        return;
    const auto reply = [this, answer, call](std::int32_t code, const std::string& read_line) {
        if (answer == Answer::Code)
            bus_.send(call.createReply({code, ToQt(read_line)}));
        else if (code == static_cast<std::int32_t>(AutomationResult::Ran))
            bus_.send(call.createReply(NumDifferencesFound()));
        else
            bus_.send(call.createErrorReply(QString::fromLatin1(ErrorNameOf(code)), last_refusal_));
    };
    automation_.Submit(FromQt(line), reply, caller);
    if (clients_.empty())
        linger_.start();
}

void AutomationService::Know(const QString& client) {
    linger_.stop();
    if (clients_.insert(client).second)
        watcher_.addWatchedService(client);
}

void AutomationService::Leave(const QString& client) {
    if (clients_.erase(client) == 0)
        return;
    watcher_.removeWatchedService(client);
    automation_.Forget(FromQt(client));
    if (clients_.empty())
        linger_.start();
}

// Others may still need what this caller is done with.
void AutomationService::Release() {
    if (!calledFromDBus())
        return;
    Leave(message().service());
    if (clients_.empty())
        QMetaObject::invokeMethod(this, &AutomationService::EndWhenUnused, Qt::QueuedConnection);
}

void AutomationService::EndWhenUnused() {
    if (!clients_.empty())
        return;
    if (automation_.Running() || (rules_.person_looks && rules_.person_looks())) {
        linger_.start();
        return;
    }
    bus_.unregisterService(QString::fromLatin1(kServiceName));
    automation_.Release();
}

}  // namespace zorvane
