#pragma once

#include "Alert.h"
#include "EditingState.h"
#include "HelpPages.h"
#include "LocalisedLabels.h"
#include "OpenedPhoto.h"
#include "PictureSaver.h"
#include "Reshaping.h"

#include <QImage>
#include <QObject>
#include "EffectCatalogue.h"

#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

class EditHistory;
struct Edit;
class MainWindow;
class PresetsMenu;
class PreviewKeys;
class QDockWidget;
class QSettings;
class RecentPhotos;
struct EffectEntry;
struct PanelContext;
class QPushButton;
class QTableWidget;
class QWidget;
class View_Picture;

// The application's controller: owns the editing state, the run-time flags,
// the labels, the main window and the effect panels for the life of the
// process, and answers the window's actions.
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

    // Opens the photo given on the command line (the first argument that is
    // no option) once the event loop runs, through the same open action as
    // the dialog: how a file manager opens a picture with the program.
    void openGivenAtStart(const QStringList& arguments);

    // The open action for a chosen, dropped or given path: analyses it and
    // swaps it in, or shows the refusal and keeps the photo open before.
    void openPhoto(const QString& path);

    // Takes a photo that has passed the open: effects off, the photo swapped
    // in, the reshaping started afresh, the preview redrawn.
    void acceptPhoto(OpenedPhoto opened);

    // Switches every effect off and unticks the Apply box of every open panel;
    // settings stay. Called when a new photo has been accepted.
    void Reset_Variables();

    MainWindow* window() const { return window_.get(); }
    QTableWidget* tableActions() const;
    View_Picture* viewPreview() const;

    // How alerts are shown, how a photo file is chosen (an empty path when
    // the user cancels), where a saved picture goes (empty: cancelled), how a
    // file is opened with its default application and how the process ends;
    // tests replace them.
    AlertPresenter showAlert;
    std::function<QString(const QString& startFolder)> chooseFileToOpen;
    std::function<QString(const QString& suggestedPath)> chooseSavePath;
    // Where File → Export Settings… writes (empty: cancelled).
    std::function<QString(const QString& suggestedPath)> chooseSettingsPath;
    std::function<void(const QUrl& url)> openWithDefaultApplication;
    std::function<void(int status)> endProcess;
    // Which settings file File → Open Settings… reads (empty: cancelled), and
    // the name Presets → Save as Preset… gives (empty: cancelled).
    std::function<QString(const QString& startFolder)> chooseSettingsToOpen;
    std::function<QString()> askPresetName;

    // Where the window's place, its panels' arrangement and the recent
    // photos are kept, and the presets folder; set before start-up to use
    // others (the tests do).
    QString settingsFile;
    QString presetsFolder;

    // Fixed at start.
    QImage image_Pick_Color;
    QString s_App_Name;
    LocalisedLabels labels;
    HelpPages helpPages;

    EditingState state;

    // Run-time flags.
    bool b_Image_Loaded_OK = false;
    std::uint64_t u_Table_Index = 0; // 0 Face, 1 Eye, 2 Mouth, 3 Advanced
    // b_Save_Picture, s_Output_Folder and s_Saved_Take_Picture.
    SaveRequest saveRequest;

    // The open photo (img_Basic) and everything derived from it, never
    // changed after the open; and what the user reshaped on it.
    std::shared_ptr<const OpenedPhoto> photo;
    Reshaping reshaping;

    // Rows of the action table per category, and the row buttons made so far.
    QStringList array_Face;
    QStringList array_Eye;
    QStringList array_Mouth;
    QList<QPointer<QPushButton>> array_Buttons;
    // The one pending refill of the action table.
    QTimer timer_Reload_Toolbar_Arrays;
    // The polling timers of Save and Share (the latest of each).
    QPointer<QTimer> timer_Save_Picture;
    QPointer<QTimer> timer_Share_Picture;
    QPointer<QWidget> windowShare;

    // The effect panels, one per catalogue row; empty until first opened,
    // dropped when closed.
    QPointer<QWidget>& panelOf(const EffectEntry& effect);
    QPointer<QWidget>& panelOf(bool EditingState::*effectSwitch);
    // The same under their own names.
    QPointer<QWidget>& window_Face_Skin_Smooth() { return panelOf(&EditingState::b_Face_Skin_Smooth); }
    QPointer<QWidget>& window_Remove_Wrinkles() { return panelOf(&EditingState::b_Remove_Wrinkles); }
    QPointer<QWidget>& window_Eyes_Color() { return panelOf(&EditingState::b_Color_Eyes); }
    QPointer<QWidget>& window_Widen_Eyes() { return panelOf(&EditingState::b_Widen_Eyes); }
    QPointer<QWidget>& window_Eye_Shadow() { return panelOf(&EditingState::b_Eye_Eyeshadow); }
    QPointer<QWidget>& window_Eyes_Darken() { return panelOf(&EditingState::b_Eyes_Darken); }
    QPointer<QWidget>& window_Cheek() { return panelOf(&EditingState::b_Apply_Cheeks); }
    QPointer<QWidget>& window_Lips_Color() { return panelOf(&EditingState::b_Color_Lips); }
    QPointer<QWidget>& window_Whiten_Teeth() { return panelOf(&EditingState::b_Whiten_Teeth); }

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
    void OnMenuExportSettings();
    void OnMenuOpenSettings();
    void OnMenuHelpAppHomePage();
    void OnMenuHelpCompanyHomePage();
    void OnMenuHelpPrivacyPolicy();
    void OnMenuHelpSubmitTicket();

    // The panel openers under their names, one per effect; menus and rows
    // open the panels through the catalogue.
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

    void Reset_Toobar_Arrays();
    void Timer_Reload_Toolbar_Arrays_Routine();
    void Timer_Save_Picture_Routine();
    void Timer_Share_Picture_Routine();
    void Close_Share_Window();

    // The preview shows the colour-picker cursor (while a cheek colour is
    // picked from the photo), or the arrow again.
    void Change_Cursor_To_Color_Picker();
    void Change_Cursor_To_Regular();

    // Each row of the action table shows whether its effect is on: ticked
    // and highlighted.
    void showEffectsOn();
    // The status line: the photo's file name, its size and the zoom.
    void showStatus();

    // Opens an effect's panel (made on first use, with its Defaults button,
    // docked beside the preview) once a photo is open; the row buttons and
    // the menus come here.
    void openEffect(const EffectEntry& effect);

    // The Edit menu's history, Presets and Open Recent.
    EditHistory& history() { return *history_; }
    PresetsMenu& presets() { return *presets_; }
    RecentPhotos& recentPhotos() { return *recent_; }

private:
    void connectView();
    void reloadTable();
    QDockWidget* dockFor(QWidget* panel, const EffectEntry& effect);
    void addEditAndPresetMenus();
    void restoreWindowPlace();
    void saveWindowPlace();
    Edit currentEdit() const;
    void restoreEdit(const Edit& edit);
    // Records the change just made as one step of the Edit menu; a named
    // step (Defaults, a settings file) never merges with the one before.
    void recordChange(const QString& step = {});
    void applySettingsFile(const QString& path, const QString& step);
    void showStateInPanels();
    QString openDialogFolder() const;
    void colourPicked();
    QTimer* startPolling(int milliseconds, void (AppDelegate::*routine)());
    void requestRender();
    bool reportedRenderFailure();
    QPushButton* rowButton(std::uint64_t category, int row, const QString& title);
    void awakeFromNib();
    void setMenuAndToolbarTitles();
    void addEffectMenuEntries();
    bool createWorkingFolder();
    void showAbout();
    void selectCategory(std::uint64_t index, const QString& header);
    void openUrl(const QUrl& url);

    QString documentsFolder_;
    QString lastOpenFolder_;
    std::unique_ptr<MainWindow> window_;
    std::vector<QPointer<QWidget>> effectPanels_ = std::vector<QPointer<QWidget>>(effectCatalogue().size());
    std::unique_ptr<PanelContext> panelContext_; // what the panels reach of the application
    std::unique_ptr<PreviewKeys> previewKeys_;
    std::unique_ptr<QSettings> settings_;
    std::unique_ptr<EditHistory> history_;
    PresetsMenu* presets_ = nullptr;
    RecentPhotos* recent_ = nullptr;
    QString pendingStep_; // the name the next recorded change takes
};
