#include "tests/runner/Commands.h"

#include <filesystem>
#include <system_error>

namespace kpx::runner {

namespace {

Json start(Session& session, const std::optional<UserNotification>& launchNotification) {
    if (session.hasStarted()) {
        return refused("the application has started already");
    }
    return session.start(launchNotification) ? done() : refused("another program holds the data folder");
}

Json startPlainly(Session& session, const Words&) { return start(session, std::nullopt); }

Json startFromReminder(Session& session, const Words& words) {
    UserNotification notification;
    notification.informativeText = words[1].text;
    notification.deliveryDate = session.platform.clock.now();
    return start(session, notification);
}

Json setClock(Session& session, const Words& words) {
    session.platform.clock.moveTo(*session.platform.localTime.parse(words[0].text));
    return done();
}

Json tick(Session& session, const Words& words) {
    test::ClockDouble& clock = session.platform.clock;
    clock.moveTo(clock.now().addingSeconds(*numberFromWord(words[0].text)));
    return done();
}

Json setSystemVersion(Session& session, const Words& words) {
    session.platform.system.setSystemVersion(
        {static_cast<int>(*integerFromWord(words[0].text)), static_cast<int>(*integerFromWord(words[1].text))});
    return done();
}

Json setAppearance(Session& session, const Words& words) {
    session.platform.system.setDark(words[0].text == "dark");
    return done();
}

Json setInstalledVersion(Session& session, const Words& words) {
    session.platform.bundle.setShortVersionString(words[0].text);
    return done();
}

Json setSiteDown(Session& session, const Words&) {
    session.platform.web.setResponse(std::nullopt);
    return done();
}

Json setSiteStatus(Session& session, const Words& words) {
    session.platform.web.setResponse(WebFetch::Response{static_cast<int>(*integerFromWord(words[1].text)), {}});
    return done();
}

Json setSiteText(Session& session, const Words& words) {
    session.platform.web.setResponse(WebFetch::Response{200, words[0].text});
    return done();
}

Json setOpening(Session& session, const Words& words) {
    session.platform.workspace.setOpeningWorks(words[0].text == "works");
    return done();
}

/// A file that somebody chooses or copies has a place, whatever the current folder.
std::filesystem::path absolutePath(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::absolute(path, ignored);
}

Json setChooserCancelled(Session& session, const Words&) {
    session.platform.files.setAnswer(std::nullopt);
    return done();
}

Json setChooser(Session& session, const Words& words) {
    session.platform.files.setAnswer(absolutePath(words[0].text));
    return done();
}

Json setClipboard(Session& session, const Words& words) {
    const std::string& text = words[0].text;
    const bool isAddress = text.empty() || text.find(":/") != std::string::npos;
    session.platform.clipboard.setAddress(isAddress ? text : absolutePath(text).string());
    return done();
}

Json setResources(Session& session, const Words& words) {
    session.platform.bundle.setResources(words[0].text);
    return done();
}

Json setDefault(Session& session, const Words& words) {
    session.platform.defaults.setInteger(words[0].text, *integerFromWord(words[1].text));
    return done();
}

Json answerNextModal(Session& session, const Words& words) {
    session.platform.alerts.answerNextModal(words[0].text);
    return done();
}

Json answerAlert(Session& session, const Words& words) {
    test::AlertDouble& alerts = session.platform.alerts;
    if (!alerts.isPending()) {
        return refused("no alert is showing");
    }
    if (!alerts.canAnswer(words[0].text)) {
        return refused("the alert has no button " + words[0].text);
    }
    session.beginAct(nullptr);
    alerts.answer(words[0].text);
    return done();
}

Json activateReminder(Session& session, const Words& words) {
    const long long index = *integerFromWord(words[0].text);
    if (index < 0 || index >= static_cast<long long>(session.platform.notifications.scheduled().size())) {
        return refused("no scheduled reminder at " + words[0].text);
    }
    session.beginAct(nullptr);
    session.platform.notifications.activate(static_cast<std::size_t>(index));
    return done();
}

Json activateStandingReminder(Session& session, const Words&) {
    if (!session.platform.notifications.isStandingDelivered()) {
        return refused("no standing reminder in the notification centre");
    }
    session.beginAct(nullptr);
    session.platform.notifications.activateStanding();
    return done();
}

Json closeMainWindow(Session& session, const Words&) {
    if (const auto obstacle = session.obstacleOnMainWindow()) {
        return refused(*obstacle);
    }
    session.beginAct(nullptr);
    KPXAppDelegate& application = session.application();
    application.windowWillClose();
    if (application.applicationShouldTerminateAfterLastWindowClosed()) {
        application.applicationWillTerminate();
        session.platform.windows.terminate();
    }
    return done();
}

}  // namespace

const std::vector<CommandForm>& platformCommands() {
    static const std::vector<CommandForm> forms{
        {"start", When::UntilTheEnd, startPlainly},
        {"start reminder TEXT", When::UntilTheEnd, startFromReminder},
        {"clock DATE", When::UntilTheEnd, setClock},
        {"tick SECONDS", When::UntilTheEnd, tick},
        {"sysversion INTEGER INTEGER", When::UntilTheEnd, setSystemVersion},
        {"appearance light|dark", When::UntilTheEnd, setAppearance},
        {"installed VERSION", When::UntilTheEnd, setInstalledVersion},
        {"site down", When::UntilTheEnd, setSiteDown},
        {"site status INTEGER", When::UntilTheEnd, setSiteStatus},
        {"site TEXT", When::UntilTheEnd, setSiteText},
        {"opening works|fails", When::UntilTheEnd, setOpening},
        {"chooser none", When::UntilTheEnd, setChooserCancelled},
        {"chooser PATH", When::UntilTheEnd, setChooser},
        {"clipboard PATH", When::UntilTheEnd, setClipboard},
        {"resources DIR", When::UntilTheEnd, setResources},
        {"default KEY INTEGER", When::UntilTheEnd, setDefault},
        {"modal BUTTON", When::UntilTheEnd, answerNextModal},
        {"answer BUTTON", When::Running, answerAlert},
        {"activate standing", When::Running, activateStandingReminder},
        {"activate INTEGER", When::Running, activateReminder},
        {"close", When::Running, closeMainWindow},
    };
    return forms;
}

}  // namespace kpx::runner
