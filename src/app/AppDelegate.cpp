#include "AppDelegate.h"

#include "HelpBrowser.h"

#include "DLibWrapper.h"
#include "DataFolder.h"
#include "FileActions.h"
#include "MainWindow.h"
#include "Presets.h"
#include "PresetsMenu.h"
#include "PreviewKeys.h"
#include "View_Picture.h"
#include "WorkingFolder.h"
#include "ui_MainWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTableWidget>
#include <QToolButton>

AppDelegate::AppDelegate(QString documentsFolder, QObject* parent)
    : QObject(parent)
    , dialogs(Dialogs::over([this] { return static_cast<QWidget*>(window_.get()); }))
    , settingsFile(QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
                       .filePath("Bellavenor/bellavenor.conf"))
    , presetsFolder(defaultPresetsFolder())
    , documentsFolder_(std::move(documentsFolder))
{
}

AppDelegate::~AppDelegate()
{
    DLibWrapper::finishReadingModel();
}

QString AppDelegate::defaultDocumentsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

bool AppDelegate::applicationDidFinishLaunching()
{
    DLibWrapper::startReadingModel(); // while the window comes up and a photo is chosen
    image_Pick_Color = QImage(":/color-picker-icon.png");
    s_App_Name = "Bellavenor";
    labels = LocalisedLabels::load();
    helpPages = HelpPages::configured(applicationDataFolder());
    window_ = std::make_unique<MainWindow>();
    settings_ = std::make_unique<QSettings>(settingsFile, QSettings::IniFormat);
    document_ = std::make_unique<Document>(labels);
    session_ = std::make_unique<RenderSession>(*document_);
    panelContext_ = std::make_unique<PanelContext>(
        PanelContext{*document_, labels, window_.get(), [this] { Change_Cursor_To_Color_Picker(); }});
    table_ = std::make_unique<CategoryTable>(tableActions(), labels, document_->state,
                                             [this](const EffectInfo& effect) { openEffect(effect); });
    panels_ = std::make_unique<PanelDock>(window_.get(), *panelContext_);
    faces_ = new FacesList(window_.get(), *document_, [this](QDockWidget* dock) { panels_->addAtTop(dock); });
    saveAndShare_ = std::make_unique<SaveAndShare>(*document_, *session_, dialogs, labels, window_.get());
    files_ = std::make_unique<FileActions>(*document_, dialogs, *window_, *settings_, presetsFolder);
    awakeFromNib();
    setMenuAndToolbarTitles();
    addEditMenu();
    Reset_Toobar_Arrays();
    if (!createWorkingFolder())
        return false;
    window_->setWindowTitle(s_App_Name);
    restoreWindowPlace();
    window_->show();
    window_->raise();
    window_->activateWindow();
    return true;
}

void AppDelegate::awakeFromNib()
{
    const Ui::MainWindow& ui = window_->ui();
    connect(window_.get(), &MainWindow::windowWillClose, this, &AppDelegate::Terminate_App);
    connect(window_.get(), &MainWindow::photoDropped, files_.get(), &FileActions::openPhoto);
    connect(ui.actionOpen, &QAction::triggered, this, &AppDelegate::OnMenuOpen);
    connect(ui.actionSave, &QAction::triggered, this, &AppDelegate::OnMenuSave);
    connect(ui.toolbarItemShare, &QAction::triggered, this, &AppDelegate::OnToolbarShare);
    connect(ui.toolbarItemFace, &QAction::triggered, this, &AppDelegate::OnToolbarFace);
    connect(ui.toolbarItemEye, &QAction::triggered, this, &AppDelegate::OnToolbarEye);
    connect(ui.toolbarItemMouth, &QAction::triggered, this, &AppDelegate::OnToolbarMouth);
    connect(ui.toolbarItemAdvanced, &QAction::triggered, this, &AppDelegate::OnToolbarAdvanced);
    connect(ui.menuItemAbout, &QAction::triggered, this, &AppDelegate::showAbout);
    connect(ui.menuItemQuit, &QAction::triggered, this, &AppDelegate::Terminate_App);
    connect(ui.menuItemHelp, &QAction::triggered, this, [this] { openHelp(helpPages.userGuide); });
    connect(ui.menuItemAppHomePage, &QAction::triggered, this, &AppDelegate::OnMenuHelpAppHomePage);
    connect(ui.menuItemCompanyHomePage, &QAction::triggered, this, &AppDelegate::OnMenuHelpCompanyHomePage);
    connect(ui.menuItemPrivacyPolicy, &QAction::triggered, this, &AppDelegate::OnMenuHelpPrivacyPolicy);
    connect(ui.menuItemSubmitTicket, &QAction::triggered, this, &AppDelegate::OnMenuHelpSubmitTicket);
    connect(ui.actionExportSettings, &QAction::triggered, files_.get(), &FileActions::exportSettings);
    connect(ui.actionOpenSettings, &QAction::triggered, files_.get(), &FileActions::openSettings);
    connectView();
    connectDocument();
}

// Zoom, pan and before/after are the preview's own; the window only passes
// its keys, menu items and the Compare button on, and keeps the status line.
void AppDelegate::connectView()
{
    const Ui::MainWindow& ui = window_->ui();
    View_Picture* view = ui.viewPreview;
    view->setDocument(document_.get(), session_.get());
    view->Change_Cursor_To_Regular = [this] { Change_Cursor_To_Regular(); };
    view->onSettingChangedOnPhoto = [this](const char* field) { panels_->showChangedOnPhoto(field); };
    connect(ui.actionZoomFit, &QAction::triggered, view, &View_Picture::zoomToFit);
    connect(ui.actionZoomActualPixels, &QAction::triggered, view, &View_Picture::zoomToActualPixels);
    connect(ui.actionZoomIn, &QAction::triggered, view, [view] { view->zoomBy(1); });
    connect(ui.actionZoomOut, &QAction::triggered, view, [view] { view->zoomBy(-1); });
    connect(ui.actionSplitView, &QAction::toggled, view, &View_Picture::setSplitView);
    connect(view, &View_Picture::splitViewChanged, ui.actionSplitView, &QAction::setChecked);
    connect(view, &View_Picture::framingChanged, this, &AppDelegate::showStatus);
    if (QToolButton* compare = window_->compareButton()) {
        connect(compare, &QToolButton::pressed, view, [view] { view->setShowingUntouched(true); });
        connect(compare, &QToolButton::released, view, [view] { view->setShowingUntouched(false); });
    }
    previewKeys_ = std::make_unique<PreviewKeys>(window_.get(), view);
}

// Every open panel and the action table's rows show what the edit now is.
void AppDelegate::connectDocument()
{
    connect(document_.get(), &Document::edited, table_.get(), &CategoryTable::showEffectsOn);
    connect(document_.get(), &Document::settingsReplaced, table_.get(), &CategoryTable::showEffectsOn);
    connect(document_.get(), &Document::edited, this, &AppDelegate::showStatus);
    // A whole new edit (undo, redo, Defaults, a preset or settings file, a
    // new photo) moves the sliders that only write as well: only a panel
    // being opened leaves them where they were.
    connect(document_.get(), &Document::settingsReplaced, this, [this] { panels_->showState(true); });
    connect(document_.get(), &Document::photoReplaced, this, &AppDelegate::showStatus);
}

// Which faces of a group photo are retouched: "face 3 of 4", "3 faces",
// "2 of 3 faces"; nothing for a photo of one face.
QString AppDelegate::facesRetouched(const OpenedPhoto& photo, const PhotoEdits& edits)
{
    const int faces = photo.faceCount();
    if (faces > 1) {
        const int kept = faces - int(edits.facesLeftOut.size());
        return kept == faces ? tr("%1 faces").arg(faces) : tr("%1 of %2 faces").arg(kept).arg(faces);
    }
    if (photo.facesFound > 1 && photo.faceNumber > 0)
        return tr("face %1 of %2").arg(photo.faceNumber).arg(photo.facesFound);
    return {};
}

void AppDelegate::showStatus()
{
    QLabel* line = window_ ? window_->statusLine() : nullptr;
    if (!line)
        return;
    if (!b_Image_Loaded_OK()) {
        line->clear();
        return;
    }
    const OpenedPhoto& photo = *document_->photo();
    const View_Picture* view = viewPreview();
    const double percent = view->zoom() * 100;
    const QString zoom = QString("%1 %").arg(QLocale().toString(percent, 'f', percent < 10 ? 1 : 0));
    QString status = QString("%1    %2 × %3 px    %4")
                         .arg(QFileInfo(photo.path).fileName())
                         .arg(photo.img_Basic.width())
                         .arg(photo.img_Basic.height())
                         .arg(view->framing().fitted ? tr("Fit (%1)").arg(zoom) : zoom);
    if (const QString faces = facesRetouched(photo, document_->photoEdits); !faces.isEmpty())
        status += "    " + faces;
    // What the mouse does now, while a tool on the photo is on.
    if (const PhotoTool* tool = view->activeTool())
        status += "    " + tool->hint();
    for (const QString& note : viewPreview()->overlayNotes())
        status += "    " + note;
    line->setText(status);
}

void AppDelegate::addEditMenu()
{
    const Ui::MainWindow& ui = window_->ui();
    QAction* undo = document_->history().stack().createUndoAction(ui.menuEdit, tr("Undo"));
    QAction* redo = document_->history().stack().createRedoAction(ui.menuEdit, tr("Redo"));
    undo->setShortcuts(QKeySequence::Undo);
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    for (QAction* action : {undo, redo}) {
        action->setShortcutContext(Qt::ApplicationShortcut); // from floating panels too
        ui.menuEdit->addAction(action);
    }
}

void AppDelegate::setMenuAndToolbarTitles()
{
    const Ui::MainWindow& ui = window_->ui();
    const LocalisedLabels& l = labels;
    // About and Quit put the label first, Help puts the program's name first.
    ui.menuItemAbout->setText(QString("%1 %2").arg(l.s_IDD_ABOUT, s_App_Name));
    ui.menuItemQuit->setText(QString("%1 %2").arg(l.s_IDD_QUIT, s_App_Name));
    ui.menuItemHelp->setText(QString("%1 %2").arg(s_App_Name, l.s_IDD_HELP));
    ui.menuItemAppHomePage->setText(l.s_IDD_APP_HOME_PAGE);
    ui.menuItemCompanyHomePage->setText(l.s_IDD_COMPANY_PAGE);
    ui.menuItemPrivacyPolicy->setText(l.s_IDD_PRIVACY_POLICY);
    ui.menuItemSubmitTicket->setText(l.s_IDD_SUBMIT_TICKET);
    ui.menuItemFace->setTitle(l.s_IDD_FACE);
    ui.menuItemEye->setTitle(l.s_IDD_EYE);
    ui.menuItemMouth->setTitle(l.s_IDD_MOUTH);
    addEffectMenuEntries();
    // Open and Save are one action each, shown in the menu and the toolbar.
    ui.actionOpen->setText(l.s_IDD_OPEN);
    ui.actionSave->setText(l.s_IDD_SAVE);
    ui.toolbarItemFace->setText(l.s_IDD_FACE);
    ui.toolbarItemEye->setText(l.s_IDD_EYE);
    ui.toolbarItemMouth->setText(l.s_IDD_MOUTH);
    ui.toolbarItemAdvanced->setText(l.s_IDD_ADVANCED);
    ui.toolbarItemShare->setText(l.s_IDD_SHARE);
    giveMenusMnemonics(window_->menuBar());
}

// Each menu of the bar opens with Alt and a letter of its title, the
// first one no menu before it took (File, Edit, View, Face: F, E, V, a).
void AppDelegate::giveMenusMnemonics(QMenuBar* bar)
{
    QString taken;
    for (QAction* menu : bar->actions()) {
        QString title = menu->text().remove('&');
        for (qsizetype i = 0; i < title.size(); ++i)
            if (const QChar c = title[i].toLower(); c.isLetter() && !taken.contains(c)) {
                taken += c;
                title.insert(i, '&');
                break;
            }
        menu->setText(title);
    }
}

// Each category's menu lists its effects that have a menu entry, in row
// order; an entry opens the effect's panel as its row does.
void AppDelegate::addEffectMenuEntries()
{
    const Ui::MainWindow& ui = window_->ui();
    QMenu* const menus[] = {ui.menuItemFace, ui.menuItemEye, ui.menuItemMouth};
    for (const Category category : {Category::Face, Category::Eye, Category::Mouth})
        for (const EffectInfo* effect : effectsOf(category))
            if (effect->row.inMenu)
                connect(menus[int(category)]->addAction(labels.text(effect->row.label)), &QAction::triggered, this,
                        [this, effect] { openEffect(*effect); });
}

bool AppDelegate::createWorkingFolder()
{
    saveAndShare_->s_Output_Folder = workingFolderPath(documentsFolder_);
    if (ensureWorkingFolder(saveAndShare_->s_Output_Folder))
        return true;
    dialogs.showAlert({"Error", "Error #0008. Application will exit.", {"Close"}});
    return false;
}

void AppDelegate::restoreWindowPlace()
{
    window_->restoreGeometry(settings_->value("window/geometry").toByteArray());
    window_->restoreState(settings_->value("window/panels").toByteArray());
}

void AppDelegate::saveWindowPlace()
{
    settings_->setValue("window/geometry", window_->saveGeometry());
    settings_->setValue("window/panels", window_->saveState());
    settings_->sync();
}

void AppDelegate::Terminate_App()
{
    if (window_)
        saveWindowPlace();
    if (panels_)
        panels_->closeAll();
    dialogs.endProcess(0);
}

// Unticking the Apply boxes here is not a user action: the panels only show
// the state, no panel's own handler runs.
void AppDelegate::Reset_Variables()
{
    document_->state.Reset_Variables();
    panels_->showState();
    table_->showEffectsOn();
}

void AppDelegate::Change_Cursor_To_Color_Picker()
{
    viewPreview()->setCursor(image_Pick_Color.isNull() ? QCursor(Qt::CrossCursor)
                                                       : QCursor(QPixmap::fromImage(image_Pick_Color), 2, 29));
}

void AppDelegate::Change_Cursor_To_Regular()
{
    viewPreview()->setCursor(Qt::ArrowCursor);
}

void AppDelegate::openEffect(const EffectInfo& effect)
{
    if (b_Image_Loaded_OK())
        panels_->open(effect);
}

QTableWidget* AppDelegate::tableActions() const
{
    return window_ ? window_->ui().tableActions : nullptr;
}

View_Picture* AppDelegate::viewPreview() const
{
    return window_ ? window_->ui().viewPreview : nullptr;
}

PresetsMenu& AppDelegate::presets() { return files_->presets(); }
RecentPhotos& AppDelegate::recentPhotos() { return files_->recentPhotos(); }

void AppDelegate::showAbout()
{
    QMessageBox::about(window_.get(), QString("%1 %2").arg(labels.s_IDD_ABOUT, s_App_Name),
                       QString("<b>%1</b> %2<br>Portrait retouching for Linux.")
                           .arg(s_App_Name, QCoreApplication::applicationVersion()));
}

void AppDelegate::OnToolbarOpen() { files_->openChosen(); }
void AppDelegate::OnToolbarSave() { saveAndShare_->OnToolbarSave(); }
void AppDelegate::OnToolbarShare() { saveAndShare_->OnToolbarShare(); }
void AppDelegate::OnToolbarFace() { Reset_Toobar_Arrays(), table_->select(0, "Face"); }
void AppDelegate::OnToolbarEye() { Reset_Toobar_Arrays(), table_->select(1, "Eye"); }
void AppDelegate::OnToolbarMouth() { Reset_Toobar_Arrays(), table_->select(2, "Mouth"); }
void AppDelegate::OnToolbarAdvanced() { table_->select(3, "Advanced"); }
void AppDelegate::OnMenuOpen() { OnToolbarOpen(); }
void AppDelegate::OnMenuSave() { OnToolbarSave(); }
void AppDelegate::OnMenuHelpAppHomePage() { openHelp(helpPages.appHomePage); }
void AppDelegate::OnMenuHelpCompanyHomePage() { openHelp(helpPages.companyPage); }
void AppDelegate::OnMenuHelpPrivacyPolicy() { openHelp(helpPages.privacyPolicy); }
void AppDelegate::OnMenuHelpSubmitTicket() { openHelp(helpPages.submitTicket); }

// The shipped pages in the program's own help window, made when first asked.
void AppDelegate::openHelp(const QUrl& page)
{
    if (!helpBrowser_)
        helpBrowser_ = new HelpBrowser(window_.get());
    helpBrowser_->open(page);
}
void AppDelegate::On_Face_Smooth_Skin() { openEffect(*effectWithSwitch(&EditingState::b_Face_Skin_Smooth)); }
void AppDelegate::On_Face_Wrinkle_Remover() { openEffect(*effectWithSwitch(&EditingState::b_Remove_Wrinkles)); }
void AppDelegate::On_Face_Cheek() { openEffect(*effectWithSwitch(&EditingState::b_Apply_Cheeks)); }
void AppDelegate::On_Eye_Color() { openEffect(*effectWithSwitch(&EditingState::b_Color_Eyes)); }
void AppDelegate::On_Eye_Size() { openEffect(*effectWithSwitch(&EditingState::b_Widen_Eyes)); }
void AppDelegate::On_Eye_Brush() { openEffect(*effectWithSwitch(&EditingState::b_Eye_Eyeshadow)); }
void AppDelegate::On_Eyes_Darken() { openEffect(*effectWithSwitch(&EditingState::b_Eyes_Darken)); }
void AppDelegate::On_Mouth_Lips() { openEffect(*effectWithSwitch(&EditingState::b_Color_Lips)); }
void AppDelegate::On_Mouth_Teeth() { openEffect(*effectWithSwitch(&EditingState::b_Whiten_Teeth)); }
void AppDelegate::On_Advanced_Effects() {}
void AppDelegate::Reset_Toobar_Arrays() { table_->Reset_Toobar_Arrays(); }
void AppDelegate::Timer_Reload_Toolbar_Arrays_Routine() { table_->Timer_Reload_Toolbar_Arrays_Routine(); }
void AppDelegate::Timer_Save_Picture_Routine() { saveAndShare_->Timer_Save_Picture_Routine(); }
void AppDelegate::Timer_Share_Picture_Routine() { saveAndShare_->Timer_Share_Picture_Routine(); }
void AppDelegate::Close_Share_Window() { saveAndShare_->Close_Share_Window(); }
