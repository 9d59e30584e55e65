#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

class QObject;

// The program's 39 interface texts. Each is looked up once, at start, under
// its "IDD_" key in the "Labels" translation context; a key without a
// translation shows as the key itself.
struct LocalisedLabels {
    QString s_IDD_OK;
    QString s_IDD_CANCEL;
    QString s_IDD_CLOSE;
    QString s_IDD_ABOUT;
    QString s_IDD_HELP;
    QString s_IDD_QUIT;
    QString s_IDD_APP_HOME_PAGE;
    QString s_IDD_COMPANY_PAGE;
    QString s_IDD_PRIVACY_POLICY;
    QString s_IDD_SUBMIT_TICKET;
    QString s_IDD_SMOOTH_SKIN;
    QString s_IDD_WRINKLE_REMOVER;
    QString s_IDD_COLOR_EYES;
    QString s_IDD_WIDEN_EYES;
    QString s_IDD_EYELID;
    QString s_IDD_LIPS;
    QString s_IDD_WHITE_TEETH;
    QString s_IDD_OPEN;
    QString s_IDD_FACE;
    QString s_IDD_SAVE;
    QString s_IDD_EYE;
    QString s_IDD_MOUTH;
    QString s_IDD_LEVEL;
    QString s_IDD_RADIUS;
    QString s_IDD_COLOR;
    QString s_IDD_TRANSPARENCY;
    QString s_IDD_ADVANCED;
    QString s_IDD_COLOR_LIPS;
    QString s_IDD_CHEEKS;
    QString s_IDD_EDIT_SIZE_POSITION;
    QString s_IDD_EDIT_COLOR_AROUND;
    QString s_IDD_EDIT_COLOR_MAKEUP;
    QString s_IDD_LEFT;
    QString s_IDD_RIGHT;
    QString s_IDD_BLUR;
    QString s_IDD_DARKEN_EYES;
    QString s_IDD_LINE_WIDTH;
    QString s_IDD_RESET;
    QString s_IDD_SHARE;

    // Looks every label up with the translators installed now, in table order.
    static LocalisedLabels load();

    // All 39 texts, in table order.
    QStringList all() const;

    // The text of a label key ("IDD_LEVEL"); a key that is no "IDD_" key is
    // an effect's own text, translated in the "Effects" context.
    QString text(const char* key) const;

    // Installs the program's translation for `locale` (the system's language
    // unless said), falling back to English, which always ships, and Qt's
    // own translation for its dialogs. Call before load().
    static void installTranslator(QObject* owner, const QLocale& locale = QLocale());
};
