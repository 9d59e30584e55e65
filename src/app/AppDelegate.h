#pragma once

#include "CategoryTable.h"
#include "Dialogs.h"
#include "Document.h"
#include "HelpPages.h"

#include <QPointer>
#include "LocalisedLabels.h"
#include "FacesList.h"

#include <QMenuBar>
#include "PanelDock.h"
#include "RenderSession.h"
#include "SaveAndShare.h"

#include <QImage>
#include <QObject>

#include <memory>

class HelpBrowser;
class FileActions;
class MainWindow;
class PresetsMenu;
class PreviewKeys;
class QSettings;
class QTableWidget;
class RecentPhotos;
class View_Picture;

// The application's controller: owns the labels, the document (the open
// photo and everything edited on it), its render session, the main window
// and the parts that answer the window's actions (the category table, the
// panels' dock, save and share, the file actions) for the life of the
// process. The program's entry points keep their names and hand on to the
// part that does the work.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    // `documentsFolder` is where the working folder goes: the user's
    // Documents folder unless a test says otherwise.
    explicit AppDelegate(QString documentsFolder = defaultDocumentsFolder(), QObject* parent = nullptr);
    ~AppDelegate() override;

    static QString defaultDocumentsFolder();

    // Start-up: labels, titles, defaults, the working folder, then the main
    // window on screen. False when the program must end because the working
    // folder could not be created (the alert has been shown by then).
    bool applicationDidFinishLaunching();

    // Closes the open panels in their fixed order and ends the process with
    // status 0. Nothing is saved.
    void Terminate_App();

    // Switches every effect off and unticks the Apply box of every open
    // panel; settings stay. A new photo does this as it comes in.
    void Reset_Variables();

    // How alerts and dialogs are shown and the process ends; tests answer
    // them. Set before start-up, like the two files below.
    Dialogs dialogs;
    // Where the window's place, its panels' arrangement and the recent
    // photos are kept, and the presets folder.
    QString settingsFile;
    QString presetsFolder;

    // Fixed at start.
    QImage image_Pick_Color;
    QString s_App_Name;
    LocalisedLabels labels;
    HelpPages helpPages;

    // A photo is open and its face analysed.
    bool b_Image_Loaded_OK() const { return document_->isOpen(); }

    Document& document() { return *document_; }
    RenderSession& session() { return *session_; }
    MainWindow* window() const { return window_.get(); }
    QTableWidget* tableActions() const;
    View_Picture* viewPreview() const;
    CategoryTable& categoryTable() { return *table_; }
    PanelDock& panels() { return *panels_; }
    SaveAndShare& saveAndShare() { return *saveAndShare_; }
    FileActions& files() { return *files_; }
    PresetsMenu& presets();
    RecentPhotos& recentPhotos();

public slots:
    void OnToolbarOpen();
    void OnToolbarSave();
    void OnToolbarShare();
    void OnToolbarFace();
    void OnToolbarEye();
    void OnToolbarMouth();
    void OnToolbarAdvanced();

    void OnMenuOpen();
    void OnMenuSave();
    void OnMenuHelpAppHomePage();
    void OnMenuHelpCompanyHomePage();
    void OnMenuHelpPrivacyPolicy();
    void OnMenuHelpSubmitTicket();

    // The panel openers under their names, one per effect; the rows and the
    // menus open the panels through the effects' list.
    void On_Face_Smooth_Skin();
    void On_Face_Wrinkle_Remover();
    void On_Face_Cheek();
    void On_Eye_Color();
    void On_Eye_Size();
    void On_Eye_Brush();
    void On_Eyes_Darken();
    void On_Mouth_Lips();
    void On_Mouth_Teeth();
    void On_Advanced_Effects();
    // Opens an effect's panel once a photo is open.
    void openEffect(const EffectInfo& effect);

    void Reset_Toobar_Arrays();
    void Timer_Reload_Toolbar_Arrays_Routine();
    void Timer_Save_Picture_Routine();
    void Timer_Share_Picture_Routine();
    void Close_Share_Window();

    // The preview shows the colour-picker cursor (while a cheek colour is
    // picked from the photo), or the arrow again.
    void Change_Cursor_To_Color_Picker();
    void Change_Cursor_To_Regular();

    // The status line: the photo's file name, its size and the zoom.
    void showStatus();
    static void giveMenusMnemonics(QMenuBar* bar);
    static QString facesRetouched(const OpenedPhoto& photo, const PhotoEdits& edits);

    // A Help menu page: shipped pages in the program's help window.
    void openHelp(const QUrl& page);
    QPointer<HelpBrowser> helpBrowser() const { return helpBrowser_; }

private:
    void awakeFromNib();
    void connectView();
    void connectDocument();
    void addEditMenu();
    void setMenuAndToolbarTitles();
    void addEffectMenuEntries();
    bool createWorkingFolder();
    void restoreWindowPlace();
    void saveWindowPlace();
    void showAbout();

    QString documentsFolder_;
    std::unique_ptr<Document> document_;
    std::unique_ptr<RenderSession> session_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<QSettings> settings_;
    std::unique_ptr<PanelContext> panelContext_;
    std::unique_ptr<CategoryTable> table_;
    std::unique_ptr<PanelDock> panels_;
    FacesList* faces_ = nullptr; // the window's child
    std::unique_ptr<SaveAndShare> saveAndShare_;
    std::unique_ptr<FileActions> files_;
    std::unique_ptr<PreviewKeys> previewKeys_;
    QPointer<HelpBrowser> helpBrowser_;
};
