#include "tests/runner/Commands.h"
#include "tests/runner/Show.h"

namespace kpx::runner {

namespace {

Json show(Session& session, const Words& words) { return showControl(session, words[0].text); }

Json call(Session& session, const Words& words) { return callOperation(session, words); }

Json describeAll(const test::NotificationDouble& centre, const std::vector<UserNotification>& notifications) {
    Json list = Json::array();
    for (const UserNotification& notification : notifications) {
        list.push_back(centre.describe(notification, notification.deliveryDate));
    }
    return list;
}

Json reminders(Session& session, const Words&) {
    const test::NotificationDouble& centre = session.platform.notifications;
    Json result = done();
    result["scheduled"] = describeAll(centre, centre.scheduled());
    result["delivered"] = describeAll(centre, centre.delivered());
    return result;
}

Json document(Session& session, const Words& words) {
    const std::vector<Document>& documents = session.platform.preview.documents();
    const long long index = *integerFromWord(words[0].text);
    if (index < 0 || index >= static_cast<long long>(documents.size())) {
        return refused("no document " + words[0].text);
    }
    Json result = done();
    result.update(describe(documents[static_cast<std::size_t>(index)]));
    return result;
}

Json defaults(Session& session, const Words&) {
    Json stored = Json::object();
    for (const auto& [key, value] : session.platform.defaults.stored()) {
        stored[key] = value;
    }
    Json result = done();
    result["defaults"] = std::move(stored);
    return result;
}

}  // namespace

const std::vector<CommandForm>& questionCommands() {
    static const std::vector<CommandForm> forms{
        {"show NAME", When::Always, show},
        {"reminders", When::Always, reminders},
        {"document INTEGER", When::Always, document},
        {"defaults", When::Always, defaults},
        {"call OPERATION ...", When::UntilTheEnd, call},
    };
    return forms;
}

}  // namespace kpx::runner
