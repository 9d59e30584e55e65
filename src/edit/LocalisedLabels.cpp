#include "LocalisedLabels.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

struct LabelEntry {
    const char* key;
    QString LocalisedLabels::*field;
};

// Load order and keys of the labels. QT_TRANSLATE_NOOP lets the translation
// tools find the keys.
const LabelEntry kLabelTable[] = {
    {QT_TRANSLATE_NOOP("Labels", "IDD_OK"), &LocalisedLabels::s_IDD_OK},
    {QT_TRANSLATE_NOOP("Labels", "IDD_CANCEL"), &LocalisedLabels::s_IDD_CANCEL},
    {QT_TRANSLATE_NOOP("Labels", "IDD_CLOSE"), &LocalisedLabels::s_IDD_CLOSE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_ABOUT"), &LocalisedLabels::s_IDD_ABOUT},
    {QT_TRANSLATE_NOOP("Labels", "IDD_HELP"), &LocalisedLabels::s_IDD_HELP},
    {QT_TRANSLATE_NOOP("Labels", "IDD_QUIT"), &LocalisedLabels::s_IDD_QUIT},
    {QT_TRANSLATE_NOOP("Labels", "IDD_APP_HOME_PAGE"), &LocalisedLabels::s_IDD_APP_HOME_PAGE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_COMPANY_PAGE"), &LocalisedLabels::s_IDD_COMPANY_PAGE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_PRIVACY_POLICY"), &LocalisedLabels::s_IDD_PRIVACY_POLICY},
    {QT_TRANSLATE_NOOP("Labels", "IDD_SUBMIT_TICKET"), &LocalisedLabels::s_IDD_SUBMIT_TICKET},
    {QT_TRANSLATE_NOOP("Labels", "IDD_SMOOTH_SKIN"), &LocalisedLabels::s_IDD_SMOOTH_SKIN},
    {QT_TRANSLATE_NOOP("Labels", "IDD_WRINKLE_REMOVER"), &LocalisedLabels::s_IDD_WRINKLE_REMOVER},
    {QT_TRANSLATE_NOOP("Labels", "IDD_COLOR_EYES"), &LocalisedLabels::s_IDD_COLOR_EYES},
    {QT_TRANSLATE_NOOP("Labels", "IDD_WIDEN_EYES"), &LocalisedLabels::s_IDD_WIDEN_EYES},
    {QT_TRANSLATE_NOOP("Labels", "IDD_EYELID"), &LocalisedLabels::s_IDD_EYELID},
    {QT_TRANSLATE_NOOP("Labels", "IDD_LIPS"), &LocalisedLabels::s_IDD_LIPS},
    {QT_TRANSLATE_NOOP("Labels", "IDD_WHITE_TEETH"), &LocalisedLabels::s_IDD_WHITE_TEETH},
    {QT_TRANSLATE_NOOP("Labels", "IDD_OPEN"), &LocalisedLabels::s_IDD_OPEN},
    {QT_TRANSLATE_NOOP("Labels", "IDD_FACE"), &LocalisedLabels::s_IDD_FACE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_SAVE"), &LocalisedLabels::s_IDD_SAVE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_EYE"), &LocalisedLabels::s_IDD_EYE},
    {QT_TRANSLATE_NOOP("Labels", "IDD_MOUTH"), &LocalisedLabels::s_IDD_MOUTH},
    {QT_TRANSLATE_NOOP("Labels", "IDD_LEVEL"), &LocalisedLabels::s_IDD_LEVEL},
    {QT_TRANSLATE_NOOP("Labels", "IDD_RADIUS"), &LocalisedLabels::s_IDD_RADIUS},
    {QT_TRANSLATE_NOOP("Labels", "IDD_COLOR"), &LocalisedLabels::s_IDD_COLOR},
    {QT_TRANSLATE_NOOP("Labels", "IDD_TRANSPARENCY"), &LocalisedLabels::s_IDD_TRANSPARENCY},
    {QT_TRANSLATE_NOOP("Labels", "IDD_ADVANCED"), &LocalisedLabels::s_IDD_ADVANCED},
    {QT_TRANSLATE_NOOP("Labels", "IDD_COLOR_LIPS"), &LocalisedLabels::s_IDD_COLOR_LIPS},
    {QT_TRANSLATE_NOOP("Labels", "IDD_CHEEKS"), &LocalisedLabels::s_IDD_CHEEKS},
    {QT_TRANSLATE_NOOP("Labels", "IDD_EDIT_SIZE_POSITION"), &LocalisedLabels::s_IDD_EDIT_SIZE_POSITION},
    {QT_TRANSLATE_NOOP("Labels", "IDD_EDIT_COLOR_AROUND"), &LocalisedLabels::s_IDD_EDIT_COLOR_AROUND},
    {QT_TRANSLATE_NOOP("Labels", "IDD_EDIT_COLOR_MAKEUP"), &LocalisedLabels::s_IDD_EDIT_COLOR_MAKEUP},
    {QT_TRANSLATE_NOOP("Labels", "IDD_LEFT"), &LocalisedLabels::s_IDD_LEFT},
    {QT_TRANSLATE_NOOP("Labels", "IDD_RIGHT"), &LocalisedLabels::s_IDD_RIGHT},
    {QT_TRANSLATE_NOOP("Labels", "IDD_BLUR"), &LocalisedLabels::s_IDD_BLUR},
    {QT_TRANSLATE_NOOP("Labels", "IDD_DARKEN_EYES"), &LocalisedLabels::s_IDD_DARKEN_EYES},
    {QT_TRANSLATE_NOOP("Labels", "IDD_LINE_WIDTH"), &LocalisedLabels::s_IDD_LINE_WIDTH},
    {QT_TRANSLATE_NOOP("Labels", "IDD_RESET"), &LocalisedLabels::s_IDD_RESET},
    {QT_TRANSLATE_NOOP("Labels", "IDD_SHARE"), &LocalisedLabels::s_IDD_SHARE},
};

} // namespace

LocalisedLabels LocalisedLabels::load()
{
    LocalisedLabels labels;
    for (const LabelEntry& entry : kLabelTable)
        labels.*entry.field = QCoreApplication::translate("Labels", entry.key);
    return labels;
}

QStringList LocalisedLabels::all() const
{
    QStringList texts;
    for (const LabelEntry& entry : kLabelTable)
        texts.append(this->*entry.field);
    return texts;
}

QString LocalisedLabels::text(const char* key) const
{
    for (const LabelEntry& entry : kLabelTable)
        if (qstrcmp(entry.key, key) == 0)
            return this->*entry.field;
    return QCoreApplication::translate("Effects", key);
}

void LocalisedLabels::installTranslator(QObject* owner, const QLocale& locale)
{
    auto* translator = new QTranslator(owner);
    if (translator->load(locale, "bellavenor", "_", ":/i18n") || translator->load("bellavenor_en", ":/i18n"))
        QCoreApplication::installTranslator(translator);
    // Qt's own dialogs (open, save, colour, the buttons of message boxes)
    // speak the same language; Debian ships their translations with Qt.
    auto* qtTexts = new QTranslator(owner);
    if (qtTexts->load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qtTexts);
}
