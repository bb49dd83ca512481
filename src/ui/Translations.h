#pragma once

#include "region/LocalizedStrings.h"

#include <QTranslator>

#include <string_view>

namespace kpx {

/// The table of translations for the widgets' own texts: those of the forms, and those that ui/ asks for with tr().
/// The table knows no contexts. A text with a mnemonic is asked for as it is, "&Add", then without it.
class TableTranslator : public QTranslator {
    Q_OBJECT

public:
    explicit TableTranslator(LocalizedStrings table) : m_table(std::move(table)) {}

    bool isEmpty() const override { return m_table.isEmpty(); }
    const LocalizedStrings& table() const { return m_table; }
    QString translate(const char* context, const char* sourceText, const char* disambiguation, int n) const override;

private:
    LocalizedStrings m_table;
};

/// What makes the windows speak the table's language: texts, the toolkit's own dialogs, the direction of reading. It
/// lasts as long as this object; windows made before it stay as they are. Without a table everything stays English.
class Translations {
public:
    Translations(LocalizedStrings table, std::string_view languageCode);
    ~Translations();
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;

    /// The table, for those who look texts up themselves.
    const LocalizedStrings& texts() const { return m_ours.table(); }

    /// Whether there are any now.
    static bool areInstalled();

private:
    TableTranslator m_ours;
    QTranslator m_toolkits;
};

/// A text that the controller's side gives in English, such as a column's title.
QString translated(std::string_view english);

}  // namespace kpx
