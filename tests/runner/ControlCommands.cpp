#include "tests/runner/Commands.h"
#include "tests/runner/Find.h"

#include <algorithm>
#include <filesystem>

namespace kpx::runner {

namespace {

Json selectTab(Session& session, const Words& words) {
    TabView& tabs = session.outlets().theTabView;
    if (const auto obstacle = session.obstacle(tabs)) {
        return refused(*obstacle);
    }
    const long long index = *integerFromWord(words[0].text);
    if (index < 0 || index >= tabs.numberOfTabs()) {
        return refused("no tab at " + words[0].text);
    }
    session.beginAct(&tabs);
    tabs.selectTab(static_cast<int>(index));
    return done();
}

/// The first item of that title, else the one that represents the text, or stands at "@index".
std::optional<int> indexOfItem(const PopUpButton& popUp, const std::string& word) {
    const auto& items = popUp.items();
    for (const auto& texts : {items, popUp.representedTexts()}) {
        if (const auto item = std::ranges::find(texts, PopUpButton::Item(word)); item != texts.end()) {
            return static_cast<int>(item - texts.begin());
        }
    }
    const auto index = word.starts_with('@') ? integerFromWord(word.substr(1)) : std::nullopt;
    if (!index || *index < 0 || *index >= popUp.numberOfItems() || !items[static_cast<std::size_t>(*index)]) {
        return std::nullopt;
    }
    return static_cast<int>(*index);
}

Json choose(Session& session, const Words& words) {
    const auto popUp = reach<PopUpButton>(session, words[0].text, "pop-up");
    if (!popUp) {
        return refused(popUp.error);
    }
    const std::optional<int> index = indexOfItem(*popUp, words[1].text);
    if (!index) {
        return refused(words[0].text + " has no item " + words[1].text);
    }
    session.beginAct(popUp.control);
    popUp->userChoose(*index);
    return done();
}

/// The text cut into its characters (code points).
std::vector<std::string> charactersOf(const std::string& text) {
    std::vector<std::string> characters;
    for (const char byte : text) {
        const bool continues = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
        if (!continues || characters.empty()) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

Target<TextField> reachEditable(Session& session, const std::string& name) {
    auto field = reach<TextField>(session, name, "text field");
    if (field && !field->isEditable()) {
        return {nullptr, name + " cannot be edited"};
    }
    return field;
}

Json type(Session& session, const Words& words) {
    const auto field = reachEditable(session, words[0].text);
    if (!field) {
        return refused(field.error);
    }
    session.beginAct(field.control);
    for (const std::string& character : charactersOf(words[1].text)) {
        field->userEdit(field->textAfterTyping(field->text(), character));
    }
    return done();
}

Json paste(Session& session, const Words& words) {
    const auto field = reachEditable(session, words[0].text);
    if (!field) {
        return refused(field.error);
    }
    session.beginAct(field.control);
    field->userEdit(words[1].text);
    return done();
}

Json leave(Session& session, const Words& words) {
    const auto field = reach<TextField>(session, words[0].text, "text field");
    if (!field) {
        return refused(field.error);
    }
    session.beginAct(field.control);
    field->userEndEditing();
    return done();
}

Json setDate(Session& session, const Words& words) {
    const auto field = reach<DateField>(session, words[0].text, "date field");
    if (!field) {
        return refused(field.error);
    }
    session.beginAct(field.control);
    field->userSetDate(*session.platform.localTime.parse(words[1].text));
    return done();
}

/// A day clicked in a calendar keeps the time of day that the picker stood on; a date written with a
/// time is taken as it is.
Json pick(Session& session, const Words& words) {
    DateField& picker = session.outlets().theDatePicker;
    if (const auto obstacle = session.obstacle(picker)) {
        return refused(*obstacle);
    }
    const test::LocalTime& localTime = session.platform.localTime;
    const Date date = *localTime.parse(words[0].text);
    const bool hasTime = words[0].text.find('T') != std::string::npos;
    session.beginAct(&picker);
    picker.userSetDate(hasTime ? date : localTime.dayOfWithTimeOf(date, picker.date()));
    return done();
}

Json clickCell(Session& session, const Words& words, Matrix::Kind kind, const char* kindName, bool on) {
    const auto matrix = reach<Matrix>(session, words[0].text, kindName);
    if (!matrix) {
        return refused(matrix.error);
    }
    const long long tag = *integerFromWord(words[1].text);
    const auto& cells = matrix->cells();
    const auto cell = std::ranges::find(cells, tag, &Matrix::Cell::tag);
    if (matrix->kind() != kind || cell == cells.end()) {
        return refused(words[0].text + " has no " + kindName + " of tag " + words[1].text);
    }
    session.beginAct(matrix.control);
    matrix->userClick(cell->tag, on);
    return done();
}

Json clickRadio(Session& session, const Words& words) {
    return clickCell(session, words, Matrix::Kind::Radio, "radio button", true);
}

Json clickCheck(Session& session, const Words& words) {
    return clickCell(session, words, Matrix::Kind::Checks, "check box", words[2].text == "on");
}

Json click(Session& session, const Words& words) {
    const auto button = reach<Button>(session, words[0].text, "button");
    if (!button) {
        return refused(button.error);
    }
    session.beginAct(button.control);
    button->userClick();
    return done();
}

Target<Control> reachDropTarget(Session& session, const std::string& name) {
    auto target = reach<Control>(session, name, "control");
    if (target && !dynamic_cast<KPXDropButton*>(target.control) && !dynamic_cast<KPXReceiptView*>(target.control)) {
        return {nullptr, name + " takes no files"};
    }
    return target;
}

/// A file held over the target, and what follows when the target takes it.
Json hover(Session& session, const Words& words,
           void (*follow)(Session&, Control&, const std::filesystem::path& file)) {
    const auto target = reachDropTarget(session, words[0].text);
    if (!target) {
        return refused(target.error);
    }
    // A file that is dragged has a place, whatever the current folder.
    std::error_code ignored;
    const auto file = std::filesystem::absolute(words[1].text, ignored);
    if (!session.application().draggingEntered(*target, file)) {
        return refused(words[0].text + " does not take this file");
    }
    follow(session, *target, file);
    return done();
}

Json drag(Session& session, const Words& words) {
    return hover(session, words, [](Session& running, Control& target, const std::filesystem::path&) {
        running.application().draggingExited(target);
    });
}

Json drop(Session& session, const Words& words) {
    return hover(session, words, [](Session& running, Control& target, const std::filesystem::path& file) {
        running.beginAct(&target);
        running.application().performDragOperation(target, file);
        running.application().concludeDragOperation(target);
    });
}

Json closePopover(Session& session, const Words& words) {
    const auto popover = find<Popover>(session, words[0].text, "popover");
    if (!popover) {
        return refused(popover.error);
    }
    if (!popover->isOpen()) {
        return refused(words[0].text + " is closed");
    }
    session.beginAct(nullptr);
    return done();
}

}  // namespace

const std::vector<CommandForm>& controlCommands() {
    static const std::vector<CommandForm> forms{
        {"tab INTEGER", When::Running, selectTab},
        {"choose NAME TITLE", When::Running, choose},
        {"type NAME TEXT", When::Running, type},
        {"paste NAME TEXT", When::Running, paste},
        {"leave NAME", When::Running, leave},
        {"date NAME DATE", When::Running, setDate},
        {"pick DATE", When::Running, pick},
        {"radio NAME INTEGER", When::Running, clickRadio},
        {"check NAME INTEGER on|off", When::Running, clickCheck},
        {"click NAME", When::Running, click},
        {"drag NAME PATH", When::Running, drag},
        {"drop NAME PATH", When::Running, drop},
        {"closepopover NAME", When::Running, closePopover},
    };
    return forms;
}

}  // namespace kpx::runner
