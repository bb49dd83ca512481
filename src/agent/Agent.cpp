#include "agent/Agent.h"

#include "region/LocalizedStrings.h"
#include "reminders/Names.h"

#include <QDBusError>
#include <QDebug>
#include <QLocale>
#include <QTimer>

#include <algorithm>

namespace kpx {

namespace {

Reminder withoutNotification(Reminder reminder) {
    reminder.phase = Phase::Waiting;
    reminder.notification = 0;
    return reminder;
}

}  // namespace

Agent::Agent(const QDBusConnection& bus, ReminderFolder folder, AgentClock& clock, RefillSources sources,
             std::function<Region()> region)
    : m_folder(std::move(folder)),
      m_clock(clock),
      m_sources(std::move(sources)),
      m_region(std::move(region)),
      m_server(bus, clock),
      m_handOver(bus) {
    m_clock.woken = [this] { wake(); };
    m_server.ready = [this](bool isNew) { serverReady(isNew); };
    m_server.failed = [this](Failure failure) { serverFailed(failure); };
    m_server.gone = [this] { serverGone(); };
    m_server.answeredLate = [this](const auto& identifier, auto notification) {
        answeredLate(identifier, notification);
    };
    m_server.clicked = [this](auto notification, const auto& identifier, const auto& token) {
        notificationClicked(notification, identifier, token);
    };
    m_server.closed = [this](auto notification) { notificationClosed(notification); };
    m_handOver.applicationAppeared = [this] {
        handOverWaiting();
        showInWindows();
    };
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &Agent::wakeSoon);
    QTimer::singleShot(0, this, [this] { takeOver(); });
}

Agent::~Agent() {
    m_clock.woken = [] {};
}

void Agent::serverReady(bool isNew) {
    if (!m_isDelivering) {
        return;
    }
    m_folder.setServer(m_server.identity());
    // Left by a run that was killed in the midst of posting.
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        if (position->phase == Phase::Posting && position->deliveredDay) {
            Reminder settled = withoutNotification(*position);
            if (m_server.replacesByTag()) {
                settled.deliveredDay = *settled.deliveredDay - std::chrono::days(1);
            }
            change(position, settled);
        }
    }
    if (isNew) {
        m_tries.clear();
    }
    deliver();
}

void Agent::serverGone() {
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        if (position->phase == Phase::Shown) {
            change(position, withoutNotification(*position));
        }
    }
}

void Agent::wake() {
    const LocalTime now = m_clock.localTime();
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        change(position, withSaneDeliveredDay(*position, now));
    }
    m_clock.wakeAt(nextDueDay(m_reminders, now));
    deliver();
}

bool Agent::isToBeTried(const Reminder& reminder) {
    if (m_beingShown.contains(reminder.identifier) || !isDue(reminder, m_clock.localTime())) {
        return false;
    }
    const auto tries = m_tries.find(reminder.identifier);
    const auto time = timeToNextTry(tries == m_tries.end() ? std::nullopt : std::optional(tries->second),
                                    m_clock.localTime(), m_clock.elapsed());
    return time && *time <= std::chrono::seconds(0);
}

void Agent::deliver() {
    while (m_isDelivering && !m_posting) {
        const auto due =
            std::ranges::find_if(m_reminders, [this](const auto& reminder) { return isToBeTried(reminder); });
        if (due == m_reminders.end()) {
            return tryAgainLater();
        }
        if (const auto content = contentToShow(due)) {
            if (!m_server.isReady()) {
                return m_server.prepare();
            }
            post(due, *content);
        }
    }
}

std::optional<ReminderContent> Agent::contentToShow(Position position) {
    const auto unwritten = m_unwritten.find(position->identifier);
    const FoundContent found = unwritten == m_unwritten.end()
                                   ? m_folder.read(*position)
                                   : FoundContent{FoundContent::State::Whole, unwritten->second};
    if (found.state == FoundContent::State::Unreadable) {
        tryFailed(position->identifier, Failure::Refused);
        return std::nullopt;
    }
    if (found.state != FoundContent::State::Whole) {
        qWarning() << "A reminder's file is gone, or damaged and was set aside:" << position->identifier.c_str();
        closeNotification(*position);
        forget(position);
        return std::nullopt;
    }
    if (!isStanding(*position)) {
        return found.content;
    }
    const LocalTime now = m_clock.localTime();
    const auto notice = refillNotice(*position, found.content.lead, m_folder, now, m_sources, m_region());
    if (notice.refills) {
        return ReminderContent{notice.refills->title, notice.refills->text, true};
    }
    Reminder silent = *position;
    silent.deliveredDay = dayDeliveredNow(silent, now);
    if (!notice.isKnown || !change(position, silent)) {
        tryFailed(position->identifier, Failure::Refused);
    }
    return std::nullopt;
}

void Agent::post(Position position, const ReminderContent& content) {
    const Reminder before = withoutNotification(*position);
    Reminder posting = before;
    posting.deliveredDay = dayDeliveredNow(posting, m_clock.localTime());
    posting.phase = Phase::Posting;
    closeNotification(*position);  // yesterday's
    if (!change(position, posting)) {
        return tryFailed(before.identifier, Failure::Refused);  // the disk takes nothing now
    }
    m_posting = true;
    const Reminder after = withoutNotification(posting);
    const std::string language = languageOfTexts(m_sources.resources, m_region().languageCodes());
    const LocalizedStrings localized(m_sources.resources, language);
    // Where there is no table the texts are English.
    const bool isRightToLeft =
        !localized.isEmpty() && QLocale(QString::fromStdString(language)).textDirection() == Qt::RightToLeft;
    m_server.post(after, content, {QString::fromStdString(localized("Show")), isRightToLeft},
                  [=, this](const Posted& answer) { posted(before, after, answer); });
}

void Agent::posted(const Reminder& before, const Reminder& after, const Posted& posted) {
    m_posting = false;
    const auto* notification = std::get_if<std::uint32_t>(&posted);
    const auto position = find(after.identifier);
    if (position == m_reminders.end()) {  // withdrawn meanwhile
        if (notification) {
            m_server.close(*notification);
        }
        return deliver();
    }
    if (!notification) {
        if (position->phase == Phase::Posting) {
            change(position, before);
        }
        tryFailed(after.identifier, std::get<Failure>(posted));
        showInWindows();
    } else if (position->phase == Phase::Posting) {
        m_tries.erase(after.identifier);
        Reminder shown = *position;
        shown.phase = Phase::Shown;
        shown.notification = *notification;
        change(position, shown);
    }
    m_folder.synchronize();
    deliver();
}

void Agent::answeredLate(const std::string& identifier, std::uint32_t notification) {
    const auto position = find(identifier);
    const bool isWaitedFor =
        position != m_reminders.end() && isDue(*position, m_clock.localTime()) && !m_beingShown.contains(identifier);
    if (!isWaitedFor) {
        return m_server.close(notification);
    }
    Reminder shown = *position;
    shown.deliveredDay = dayDeliveredNow(shown, m_clock.localTime());
    shown.phase = Phase::Shown;
    shown.notification = notification;
    if (change(position, shown)) {
        m_tries.erase(identifier);
        m_folder.synchronize();
    }
}

void Agent::tryFailed(const std::string& identifier, Failure failure) {
    const auto before = m_tries.find(identifier);
    m_tries[identifier] = afterFailure(before == m_tries.end() ? std::nullopt : std::optional(before->second), failure,
                                       m_clock.localTime(), m_clock.elapsed());
}

void Agent::serverFailed(Failure failure) {
    for (const Reminder& reminder : m_reminders) {
        if (isToBeTried(reminder)) {
            tryFailed(reminder.identifier, failure);
        }
    }
    showInWindows();
    tryAgainLater();
}

void Agent::tryAgainLater() {
    std::optional<std::chrono::seconds> earliest;
    for (const Reminder& reminder : m_reminders) {
        const auto tries = m_tries.find(reminder.identifier);
        if (tries == m_tries.end() || !isDue(reminder, m_clock.localTime())) {
            continue;
        }
        const auto time = timeToNextTry(tries->second, m_clock.localTime(), m_clock.elapsed());
        if (time && *time > std::chrono::seconds(0)) {
            earliest = std::min(earliest.value_or(*time), *time);
        }
    }
    if (earliest) {
        m_clock.callAfter(*earliest, [this, setting = ++m_nextTry] {
            if (setting == m_nextTry) {
                deliver();
            }
        });
    }
}

void Agent::showInWindows() {
    for (auto position = m_reminders.begin(); position != m_reminders.end(); ++position) {
        const auto tries = m_tries.find(position->identifier);
        if (tries != m_tries.end() && tries->second.withoutServer >= triesBeforeAWindow &&
            isDue(*position, m_clock.localTime()) && !m_beingShown.contains(position->identifier)) {
            showInWindow(position);
        }
    }
}

void Agent::showInWindow(Position position) {
    const FoundContent found = m_folder.read(*position);
    const std::string identifier = position->identifier;
    ReminderContent content = m_unwritten.contains(identifier) ? m_unwritten.at(identifier) : found.content;
    if (isStanding(*position)) {
        const auto notice = refillNotice(*position, content.lead, m_folder, m_clock.localTime(), m_sources, m_region());
        content = notice.refills ? ReminderContent{notice.refills->title, notice.refills->text} : ReminderContent();
    }
    if (content.text.empty() && content.title.empty()) {
        return;  // the next try finds out why
    }
    m_beingShown.insert(identifier);
    m_handOver.give(showAction, identifier, content, {}, [this, identifier](bool stands) {
        m_beingShown.erase(identifier);
        const auto shown = find(identifier);
        if (stands && shown != m_reminders.end()) {
            Reminder done = *shown;
            done.deliveredDay = dayDeliveredNow(done, m_clock.localTime());
            change(shown, done);
            m_tries.erase(identifier);
            m_folder.synchronize();
        }
        deliver();  // also when the next try is due by now
    });
}

void Agent::notificationClicked(std::uint32_t notification, const std::string& identifier, const QString& token) {
    const auto position = identifier.empty() ? findShown(notification) : find(identifier);
    if (!m_isDelivering || position == m_reminders.end()) {
        return;  // somebody else's notification
    }
    const Reminder shown = *position;
    Reminder clicked = withoutNotification(shown);
    clicked.phase = Phase::Clicked;
    change(position, clicked);
    m_folder.synchronize();
    closeNotification(shown);  // only now: until the click is on the disk it can be clicked again
    handOver(clicked, token);
}

void Agent::notificationClosed(std::uint32_t notification) {
    const auto position = findShown(notification);
    if (position != m_reminders.end()) {
        change(position, withoutNotification(*position));
    }
}

void Agent::RemoveDelivered(const QString& identifier, const QByteArray& text) {
    const auto position = find(identifierOf(identifier, text));
    if (position == m_reminders.end()) {
        return;
    }
    closeNotification(*position);
    if (position->phase == Phase::Shown || (isStanding(*position) && position->phase == Phase::Clicked)) {
        change(position, withoutNotification(*position));
    }
}

void Agent::closeNotification(const Reminder& reminder) {
    if (reminder.phase == Phase::Shown) {
        m_server.close(reminder.notification);
    }
}

void Agent::handOver(const Reminder& reminder, const QString& token) {
    const std::string identifier = reminder.identifier;
    if (m_beingHandedOver.contains(identifier)) {
        return;
    }
    const FoundContent found = m_folder.read(reminder);
    if (found.state != FoundContent::State::Whole && !m_unwritten.contains(identifier)) {
        qWarning() << "A clicked reminder's file cannot be read:" << identifier.c_str();
        return;
    }
    m_beingHandedOver.insert(identifier);
    m_handOver.give(clickedAction, identifier,
                    m_unwritten.contains(identifier) ? m_unwritten.at(identifier) : found.content, token,
                    [this, identifier](bool) { m_beingHandedOver.erase(identifier); });
}

void Agent::handOverWaiting() {
    for (const Reminder& reminder : m_reminders) {
        if (reminder.phase == Phase::Clicked) {
            handOver(reminder, {});
        }
    }
}

}  // namespace kpx
