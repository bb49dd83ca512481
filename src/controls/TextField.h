#pragma once

#include "controls/Control.h"

#include <string>

namespace kpx {

/// A line of text. The text is UTF-8.
class TextField : public Control {
public:
    TextField(ControlRegistry& registry, std::string_view name, Place place, int tag = 0, bool editable = true)
        : Control(registry, name, place), m_tag(tag), m_editable(editable) {}

    /// On a list sheet, the position of the field's key in the list's key order; else 0.
    int tag() const { return m_tag; }
    /// A display field cannot be typed into.
    bool isEditable() const { return m_editable; }

    const std::string& text() const { return m_text; }
    void setText(std::string text);
    /// Whether the user is in the middle of editing the text.
    bool isBeingEdited() const { return m_beingEdited; }

    /// The user's edit would make the text `proposed`. Applied unless the filter refuses it; a refusal
    /// leaves the text as it was. Answers whether it was applied.
    bool userEdit(const std::string& proposed);
    /// What stands before the cursor once the user typed something there; pasted text goes in as it is. To be offered
    /// to userEdit(), with what stands behind the cursor.
    std::string textAfterTyping(const std::string& before, const std::string& typed) const {
        return typing ? typing(before, typed) : before + typed;
    }
    /// The user leaves the field; does nothing when no editing was going on.
    void userEndEditing();

    /// What typed characters become before anything judges them; none leaves them as they are.
    std::function<std::string(const std::string& before, const std::string& typed)> typing;
    /// Consulted with the whole proposed text on every edit; none accepts everything.
    std::function<bool(const std::string& proposed)> filter;
    /// After an edit of the user's was applied.
    std::function<void()> textDidChange;
    /// After the user left the field.
    std::function<void()> textDidEndEditing;

private:
    std::string m_text;
    int m_tag;
    bool m_editable;
    bool m_beingEdited = false;
};

/// A text that the program sets and nobody edits.
class Label : public Control {
public:
    using Control::Control;
    const std::string& text() const { return m_text; }
    void setText(std::string text);

private:
    std::string m_text;
};

}  // namespace kpx
