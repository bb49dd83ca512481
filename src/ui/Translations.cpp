#include "ui/Translations.h"

#include "ui/Conversions.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <utility>

namespace kpx {

namespace {

QTranslator* installed = nullptr;

std::string withoutMnemonic(const char* text) {
    std::string plain;
    for (const char* character = text; *character; ++character) {
        // A doubled one stands for itself.
        if (*character == '&' && *++character == '\0') {
            break;
        }
        plain += *character;
    }
    return plain;
}

/// The newer catalogue; of some languages there is only the older one.
void loadCatalogue(QTranslator& translator, const QLocale& language) {
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (const QString& catalogue : {QStringLiteral("qtbase"), QStringLiteral("qt")}) {
        if (translator.load(language, catalogue, QStringLiteral("_"), folder)) {
            return;
        }
    }
}

}  // namespace

QString TableTranslator::translate(const char* /*context*/, const char* sourceText, const char* /*disambiguation*/,
                                   int /*n*/) const {
    auto text = m_table.translation(sourceText);
    if (!text) {
        text = m_table.translation(withoutMnemonic(sourceText));
    }
    return text ? qstring(*text) : QString();
}

Translations::Translations(LocalizedStrings table, std::string_view languageCode) : m_ours(std::move(table)) {
    if (m_ours.isEmpty()) {
        return;
    }
    const QLocale language(qstring(languageCode));
    QCoreApplication::installTranslator(&m_ours);
    installed = &m_ours;
    // Asked before ours: the toolkit knows its own dialogs best.
    loadCatalogue(m_toolkits, language);
    QCoreApplication::installTranslator(&m_toolkits);
    QGuiApplication::setLayoutDirection(language.textDirection());
}

Translations::~Translations() {
    if (installed == &m_ours) {
        installed = nullptr;
        QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
    }
}

bool Translations::areInstalled() { return installed != nullptr; }

QString translated(std::string_view english) { return QCoreApplication::translate("", std::string(english).c_str()); }

}  // namespace kpx
