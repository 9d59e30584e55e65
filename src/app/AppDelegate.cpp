#include "AppDelegate.h"

#include "DLibWrapper.h"
#include "DataFolder.h"
#include "EditHistory.h"
#include "EffectCatalogue.h"
#include "EffectPanel.h"
#include "EditingStateJson.h"
#include "PhotoDecoder.h"
#include "PictureSaver.h"
#include "MainWindow.h"
#include "Presets.h"
#include "PresetsMenu.h"
#include "RecentPhotos.h"
#include "PreviewKeys.h"
#include "View_Picture.h"
#include "WorkingFolder.h"
#include "Window_Share.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDockWidget>
#include <QInputDialog>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QStatusBar>
#include <QToolButton>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QStandardPaths>

AppDelegate::AppDelegate(QString documentsFolder, QObject* parent)
    : QObject(parent)
    , documentsFolder_(std::move(documentsFolder))
{
    showAlert = [this](const Alert& alert) { return presentAlertModally(alert, window_.get()); };
    chooseFileToOpen = [this](const QString& startFolder) {
        QFileDialog dialog(window_.get());
        // Phones and cameras write upper-case extensions as often as not.
        QStringList patterns;
        for (const QString& extension : readPictureExtensions())
            patterns << "*." + extension << "*." + extension.toUpper();
        dialog.setNameFilter(tr("Pictures") + " (" + patterns.join(' ') + ")");
        dialog.setDirectory(startFolder); // a folder only: the name field stays empty
        dialog.setFileMode(QFileDialog::ExistingFile);
        return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
    };
    chooseSavePath = [this](const QString& suggestedPath) {
        QFileDialog dialog(window_.get(), "Select a folder to save the captured image", suggestedPath);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setOption(QFileDialog::ShowDirsOnly, false);
        // The name's extension chooses the format; without a known one the
        // chosen type adds its own.
        const auto types = writtenTypes();
        QStringList filters;
        for (const auto& type : types)
            filters << type.first;
        dialog.setNameFilters(filters);
        dialog.selectFile(QFileInfo(suggestedPath).fileName());
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
            return QString();
        const qsizetype type = std::max<qsizetype>(filters.indexOf(dialog.selectedNameFilter()), 0);
        return withPictureExtension(dialog.selectedFiles().first(), types[std::size_t(type)].second);
    };
    chooseSettingsPath = [this](const QString& suggestedPath) {
        return QFileDialog::getSaveFileName(window_.get(), tr("Export Settings…"), suggestedPath,
                                            tr("Settings") + " (*.json)");
    };
    chooseSettingsToOpen = [this](const QString& startFolder) {
        return QFileDialog::getOpenFileName(window_.get(), tr("Open Settings…"), startFolder,
                                            tr("Settings") + " (*.json)");
    };
    askPresetName = [this] {
        return QInputDialog::getText(window_.get(), tr("Save as Preset"), tr("Name of the preset:"));
    };
    settingsFile = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
                       .filePath("Bellavenor/bellavenor.conf");
    presetsFolder = defaultPresetsFolder();
    openWithDefaultApplication = [](const QUrl& url) { QDesktopServices::openUrl(url); };
    endProcess = [](int status) { QCoreApplication::exit(status); };
    timer_Reload_Toolbar_Arrays.setSingleShot(true);
    timer_Reload_Toolbar_Arrays.setInterval(200);
    connect(&timer_Reload_Toolbar_Arrays, &QTimer::timeout, this, &AppDelegate::Timer_Reload_Toolbar_Arrays_Routine);
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
    history_ = std::make_unique<EditHistory>(labels, [this](const Edit& edit) { restoreEdit(edit); });
    awakeFromNib();
    setMenuAndToolbarTitles();
    addEditAndPresetMenus();

    array_Face.clear();
    array_Eye.clear();
    array_Mouth.clear();
    array_Buttons.clear();
    photo = std::make_shared<const OpenedPhoto>();
    reshaping = {};
    viewPreview()->setSources(photo, &reshaping, &state, &saveRequest);
    viewPreview()->Change_Cursor_To_Regular = [this] { Change_Cursor_To_Regular(); };
    viewPreview()->onColourPicked = [this](int) { colourPicked(); };
    viewPreview()->onLeftReleased = [this] { recordChange(); };
    u_Table_Index = 0;
    b_Image_Loaded_OK = false;
    saveRequest.b_Save_Picture = false;
    Reset_Toobar_Arrays();
    for (const EffectEntry* effect : effectsInCloseOrder())
        panelOf(*effect) = nullptr;
    panelContext_ = std::make_unique<PanelContext>(PanelContext{
        state, labels, window_.get(),
        [this] {
            viewPreview()->update();
            showEffectsOn();
            recordChange();
        },
        [this] { Change_Cursor_To_Color_Picker(); },
        [this] {
            reshaping.resetUnderEyeRings(photo->regions, photo->imgSize.height());
            pendingStep_ = tr("Reset Under-Eye Rings");
        }});
    state = EditingState{};
    history_->startAt(currentEdit());

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
    connect(window_.get(), &MainWindow::photoDropped, this, &AppDelegate::openPhoto);
    connect(ui.actionOpen, &QAction::triggered, this, &AppDelegate::OnMenuOpen);
    connect(ui.actionSave, &QAction::triggered, this, &AppDelegate::OnMenuSave);
    connect(ui.toolbarItemShare, &QAction::triggered, this, &AppDelegate::OnToolbarShare);
    connect(ui.toolbarItemFace, &QAction::triggered, this, &AppDelegate::OnToolbarFace);
    connect(ui.toolbarItemEye, &QAction::triggered, this, &AppDelegate::OnToolbarEye);
    connect(ui.toolbarItemMouth, &QAction::triggered, this, &AppDelegate::OnToolbarMouth);
    connect(ui.toolbarItemAdvanced, &QAction::triggered, this, &AppDelegate::OnToolbarAdvanced);
    connect(ui.menuItemAbout, &QAction::triggered, this, &AppDelegate::showAbout);
    connect(ui.menuItemQuit, &QAction::triggered, this, &AppDelegate::Terminate_App);
    connect(ui.menuItemHelp, &QAction::triggered, this, [this] { openUrl(helpPages.userGuide); });
    connect(ui.menuItemAppHomePage, &QAction::triggered, this, &AppDelegate::OnMenuHelpAppHomePage);
    connect(ui.menuItemCompanyHomePage, &QAction::triggered, this, &AppDelegate::OnMenuHelpCompanyHomePage);
    connect(ui.menuItemPrivacyPolicy, &QAction::triggered, this, &AppDelegate::OnMenuHelpPrivacyPolicy);
    connect(ui.menuItemSubmitTicket, &QAction::triggered, this, &AppDelegate::OnMenuHelpSubmitTicket);
    connect(ui.actionExportSettings, &QAction::triggered, this, &AppDelegate::OnMenuExportSettings);
    connect(ui.actionOpenSettings, &QAction::triggered, this, &AppDelegate::OnMenuOpenSettings);
    connectView();
}

// Zoom, pan and before/after are the preview's own; the window only passes
// its keys, menu items and the Compare button on, and keeps the status line.
void AppDelegate::connectView()
{
    const Ui::MainWindow& ui = window_->ui();
    View_Picture* view = ui.viewPreview;
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

void AppDelegate::showStatus()
{
    QLabel* line = window_ ? window_->statusLine() : nullptr;
    if (!line)
        return;
    if (!b_Image_Loaded_OK || !photo || photo->isEmpty()) {
        line->clear();
        return;
    }
    const View_Picture* view = viewPreview();
    const double percent = view->zoom() * 100;
    const QString zoom = QString("%1 %").arg(QLocale().toString(percent, 'f', percent < 10 ? 1 : 0));
    line->setText(QString("%1    %2 × %3 px    %4")
                      .arg(QFileInfo(photo->path).fileName())
                      .arg(photo->img_Basic.width())
                      .arg(photo->img_Basic.height())
                      .arg(view->framing().fitted ? tr("Fit (%1)").arg(zoom) : zoom));
}

void AppDelegate::OnMenuExportSettings()
{
    const QString folder = lastOpenFolder_.isEmpty() ? QDir::homePath() : lastOpenFolder_;
    const QString path = chooseSettingsPath(QDir(folder).filePath("bellavenor-settings.json"));
    if (path.isEmpty())
        return;
    if (QString error; !writeSettingsFile(path, state, error)) {
        showAlert({"Error", error, {"Close"}});
        return;
    }
    window_->statusBar()->showMessage(tr("Settings exported to %1").arg(QDir::toNativeSeparators(path)), 5000);
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
}

// Each category's menu lists its effects that have a menu entry, in
// catalogue order; an entry opens the effect's panel as its row does.
void AppDelegate::addEffectMenuEntries()
{
    const Ui::MainWindow& ui = window_->ui();
    QMenu* const menus[] = {ui.menuItemFace, ui.menuItemEye, ui.menuItemMouth};
    for (const EffectEntry& effect : effectCatalogue()) {
        if (!effect.inMenu)
            continue;
        QAction* entry = menus[int(effect.category)]->addAction(labels.*effect.label);
        connect(entry, &QAction::triggered, this, [this, &effect] { openEffect(effect); });
    }
}

bool AppDelegate::createWorkingFolder()
{
    saveRequest.s_Output_Folder = workingFolderPath(documentsFolder_);
    if (ensureWorkingFolder(saveRequest.s_Output_Folder))
        return true;
    showAlert({"Error", "Error #0008. Application will exit.", {"Close"}});
    return false;
}

void AppDelegate::Terminate_App()
{
    saveWindowPlace();
    for (const EffectEntry* effect : effectsInCloseOrder()) {
        QPointer<QWidget>& panel = panelOf(*effect);
        if (panel) {
            panel->close();
            panel = nullptr;
        }
    }
    endProcess(0);
}

// Unticking the Apply boxes here is not a user action: the panels only show
// the state, no panel's own handler runs.
void AppDelegate::Reset_Variables()
{
    state.Reset_Variables();
    showStateInPanels();
    showEffectsOn();
}

void AppDelegate::showStateInPanels()
{
    for (const EffectEntry* effect : effectsInCloseOrder())
        if (auto* panel = qobject_cast<EffectPanel*>(panelOf(*effect).data()))
            panel->showState();
}

QTableWidget* AppDelegate::tableActions() const
{
    return window_ ? window_->ui().tableActions : nullptr;
}

View_Picture* AppDelegate::viewPreview() const
{
    return window_ ? window_->ui().viewPreview : nullptr;
}

void AppDelegate::showAbout()
{
    QMessageBox::about(window_.get(), QString("%1 %2").arg(labels.s_IDD_ABOUT, s_App_Name),
                       QString("<b>%1</b> %2<br>Portrait retouching for Linux.")
                           .arg(s_App_Name, QCoreApplication::applicationVersion()));
}

void AppDelegate::openUrl(const QUrl& url)
{
    QDesktopServices::openUrl(url);
}

void AppDelegate::selectCategory(std::uint64_t index, const QString& header)
{
    u_Table_Index = index;
    if (QTableWidget* table = tableActions())
        table->horizontalHeaderItem(0)->setText(header);
    reloadTable();
}

void AppDelegate::OnToolbarFace()
{
    Reset_Toobar_Arrays();
    selectCategory(0, "Face");
}

void AppDelegate::OnToolbarEye()
{
    Reset_Toobar_Arrays();
    selectCategory(1, "Eye");
}

void AppDelegate::OnToolbarMouth()
{
    Reset_Toobar_Arrays();
    selectCategory(2, "Mouth");
}

void AppDelegate::OnToolbarAdvanced()
{
    selectCategory(3, "Advanced");
}

// The open dialog starts in the last photo's folder, else in the pictures
// folder where there is one, else at home.
QString AppDelegate::openDialogFolder() const
{
    if (!lastOpenFolder_.isEmpty())
        return lastOpenFolder_;
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

void AppDelegate::OnToolbarOpen()
{
    const QString path = chooseFileToOpen(openDialogFolder());
    if (!path.isEmpty())
        openPhoto(path);
}

void AppDelegate::openGivenAtStart(const QStringList& arguments)
{
    for (const QString& argument : arguments)
        if (!argument.startsWith('-')) {
            QTimer::singleShot(0, this, [this, argument] { openPhoto(argument); });
            return;
        }
}

void AppDelegate::openPhoto(const QString& path)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    OpenResult opened = openAndAnalyse(path);
    QGuiApplication::restoreOverrideCursor();
    if (opened.outcome != OpenResult::Opened) {
        showAlert({"Error", opened.message, {"Close"}});
        return;
    }
    lastOpenFolder_ = QFileInfo(path).absolutePath();
    recent_->add(path);
    acceptPhoto(std::move(opened.photo));
}

// Exactly one face: every effect goes off, then the new photo comes in
// whole, replacing the old one in one assignment, and the user's reshaping
// starts again from its regions.
void AppDelegate::acceptPhoto(OpenedPhoto opened)
{
    Reset_Variables();
    photo = std::make_shared<const OpenedPhoto>(std::move(opened));
    reshaping = Reshaping::of(photo->regions);
    viewPreview()->setSources(photo, &reshaping, &state, &saveRequest);
    b_Image_Loaded_OK = true;
    history_->startAt(currentEdit()); // the old photo's steps belong to its face
    viewPreview()->update();
    showStatus();
}

void AppDelegate::OnMenuOpen() { OnToolbarOpen(); }
void AppDelegate::OnMenuSave() { OnToolbarSave(); }
void AppDelegate::OnMenuHelpAppHomePage() { openUrl(helpPages.appHomePage); }
void AppDelegate::OnMenuHelpCompanyHomePage() { openUrl(helpPages.companyPage); }
void AppDelegate::OnMenuHelpPrivacyPolicy() { openUrl(helpPages.privacyPolicy); }
void AppDelegate::OnMenuHelpSubmitTicket() { openUrl(helpPages.submitTicket); }

QPointer<QWidget>& AppDelegate::panelOf(const EffectEntry& effect)
{
    return effectPanels_[std::size_t(&effect - effectCatalogue().data())];
}

QPointer<QWidget>& AppDelegate::panelOf(bool EditingState::*effectSwitch)
{
    return panelOf(*effectWithSwitch(effectSwitch));
}

void AppDelegate::openEffect(const EffectEntry& effect)
{
    if (!b_Image_Loaded_OK)
        return;
    QPointer<QWidget>& panel = panelOf(effect);
    if (!panel) {
        EffectPanel* made = effect.makePanel(*panelContext_); // deletes itself when closed, which empties the reference
        made->offerDefaults([this, &effect] {
            state.restoreDefaultsOf(effect.effectSwitch);
            pendingStep_ = tr("%1 Defaults").arg(labels.*effect.label);
        });
        panel = made;
        dockFor(made, effect);
    }
    panel->show();
    QWidget* dock = panel->parentWidget();
    while (dock && !qobject_cast<QDockWidget*>(dock))
        dock = dock->parentWidget();
    if (dock) {
        dock->show();
        dock->raise(); // a panel tabbed behind another comes to the front
    }
    // The keyboard goes to the panel just opened: its first control.
    for (QWidget* control : panel->findChildren<QWidget*>())
        if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled()) {
            control->setFocus(Qt::OtherFocusReason);
            break;
        }
}

// Panels open in a column docked at the right of the preview, in the order
// opened, so none covers the photo; the preview fits the photo into the
// room left. Each can be pulled out to float and docked again, and comes
// back where it was last (saveState/restoreDockWidget). A panel taller than
// its share of the column scrolls.
QDockWidget* AppDelegate::dockFor(QWidget* panel, const EffectEntry& effect)
{
    auto* dock = new QDockWidget(panel->windowTitle(), window_.get());
    dock->setObjectName(QString("panel-") + nameOfSwitch(effect.effectSwitch));
    dock->setAttribute(Qt::WA_DeleteOnClose);
    dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(panel);
    scroll->setMinimumWidth(panel->minimumSizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
    scroll->setMaximumHeight(panel->sizeHint().height()); // no taller than the panel: the rest stays free
    dock->setWidget(scroll);
    connect(panel, &QObject::destroyed, dock, &QWidget::close); // closing the panel closes its dock
    if (!window_->restoreDockWidget(dock))
        window_->addDockWidget(Qt::RightDockWidgetArea, dock, Qt::Vertical);
    return dock;
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

// A category change empties the table at once and fills it 0.2 s later; a
// second change within that time replaces the pending refill.
void AppDelegate::Reset_Toobar_Arrays()
{
    array_Face.clear();
    array_Eye.clear();
    array_Mouth.clear();
    reloadTable();
    for (const QPointer<QPushButton>& button : std::as_const(array_Buttons))
        if (button)
            button->deleteLater();
    array_Buttons.clear();
    timer_Reload_Toolbar_Arrays.start();
}

// Fills the lists of all three categories, whatever the selected one, from
// the effect catalogue.
void AppDelegate::Timer_Reload_Toolbar_Arrays_Routine()
{
    const auto labelsOf = [this](Category category) {
        QStringList titles;
        for (const EffectEntry* effect : effectsOf(category))
            titles.append(labels.*effect->label);
        return titles;
    };
    array_Face = labelsOf(Category::Face);
    array_Eye = labelsOf(Category::Eye);
    array_Mouth = labelsOf(Category::Mouth);
    reloadTable();
}

void AppDelegate::reloadTable()
{
    QTableWidget* table = tableActions();
    if (!table)
        return;
    const QStringList* titles = u_Table_Index == 0   ? &array_Face
                                : u_Table_Index == 1 ? &array_Eye
                                : u_Table_Index == 2 ? &array_Mouth
                                                     : nullptr;
    table->setRowCount(titles ? int(titles->size()) : 0);
    for (int row = 0; titles && row < titles->size(); ++row) {
        auto* cell = new QWidget; // the row's cell view
        QPushButton* button = rowButton(u_Table_Index, row, titles->at(row));
        button->setParent(cell);
        button->setGeometry(0, 0, 164, 30);
        table->setCellWidget(row, 0, cell);
        array_Buttons.append(button);
    }
    showEffectsOn();
}

void AppDelegate::showEffectsOn()
{
    if (u_Table_Index > std::uint64_t(Category::Mouth))
        return;
    const std::vector<const EffectEntry*> effects = effectsOf(Category(u_Table_Index));
    static const QIcon tick(":/icons/tick.svg");
    for (qsizetype row = 0; row < array_Buttons.size() && size_t(row) < effects.size(); ++row)
        if (QPushButton* button = array_Buttons[row]) {
            const bool on = state.*effects[size_t(row)]->effectSwitch;
            button->setChecked(on);
            button->setIcon(on ? tick : QIcon());
        }
}

// A row's button opens the effect of that row of the category; Advanced
// lists no effects.
QPushButton* AppDelegate::rowButton(std::uint64_t category, int row, const QString& title)
{
    auto* button = new QPushButton(title);
    if (category > std::uint64_t(Category::Mouth))
        return button;
    // Checkable only to look highlighted while its effect is on; a click
    // opens the panel and the row shows the switch again.
    button->setCheckable(true);
    const std::vector<const EffectEntry*> effects = effectsOf(Category(category));
    if (size_t(row) < effects.size())
        connect(button, &QPushButton::clicked, this, [this, effect = effects[size_t(row)]] {
            openEffect(*effect);
            showEffectsOn();
        });
    return button;
}

void AppDelegate::Change_Cursor_To_Color_Picker()
{
    if (QWidget* preview = viewPreview())
        preview->setCursor(image_Pick_Color.isNull() ? QCursor(Qt::CrossCursor)
                                                     : QCursor(QPixmap::fromImage(image_Pick_Color), 2, 29));
}

// The preview took a cheek colour from the photo: the panel shows it and
// comes back to the front.
void AppDelegate::colourPicked()
{
    auto* cheek = qobject_cast<EffectPanel*>(window_Cheek().data());
    if (!cheek)
        return;
    cheek->showState();
    recordChange();
    if (QWidget* floating = cheek->window(); floating != window_.get()) {
        floating->show();
        floating->raise();
    }
}

void AppDelegate::Change_Cursor_To_Regular()
{
    if (QWidget* preview = viewPreview())
        preview->setCursor(Qt::ArrowCursor);
}

// Save and Share ask the preview to render the picture into the working
// folder and poll until it has: the file exists at the first tick after.
void AppDelegate::requestRender()
{
    saveRequest.b_Save_Picture = true;
    viewPreview()->update();
}

QTimer* AppDelegate::startPolling(int milliseconds, void (AppDelegate::*routine)())
{
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, routine);
    timer->start(milliseconds);
    return timer;
}

void AppDelegate::OnToolbarSave()
{
    if (!b_Image_Loaded_OK)
        return;
    requestRender();
    // An earlier save timer is not cancelled: it keeps polling, as it always
    // has in this program.
    timer_Save_Picture = startPolling(2000, &AppDelegate::Timer_Save_Picture_Routine);
}

void AppDelegate::Timer_Save_Picture_Routine()
{
    if (saveRequest.b_Save_Picture)
        return;
    if (timer_Save_Picture) { // only the latest timer stops
        timer_Save_Picture->stop();
        timer_Save_Picture->deleteLater();
    }
    if (reportedRenderFailure())
        return;
    const QString rendered = saveRequest.s_Saved_Take_Picture;
    const QString chosen = chooseSavePath(rendered);
    if (chosen.isEmpty())
        return; // the picture stays in the working folder
    // The dialog has asked before replacing; the old file is replaced in one
    // step or not at all.
    if (const QString reason = moveAsFormat(rendered, chosen, saveRequest.metadata); !reason.isEmpty()) {
        showAlert({"Error",
                   QString("The picture could not be saved to \"%1\": %2. It is still in the working folder: \"%3\".")
                       .arg(QDir::toNativeSeparators(chosen), reason, QDir::toNativeSeparators(rendered)),
                   {"Close"}});
        return;
    }
    if (showAlert({"Success", "Image file saved successfully.", {"View Image File", "Close"}}) == 0)
        openWithDefaultApplication(QUrl::fromLocalFile(chosen));
}

// A render that failed (full disk, no memory) is said so, instead of
// offering a file that is not there.
bool AppDelegate::reportedRenderFailure()
{
    if (saveRequest.failure.isEmpty())
        return false;
    showAlert({"Error", saveRequest.failure, {"Close"}});
    return true;
}

void AppDelegate::OnToolbarShare()
{
    if (!b_Image_Loaded_OK)
        return;
    requestRender();
    if (timer_Share_Picture) {
        timer_Share_Picture->stop();
        timer_Share_Picture->deleteLater();
    }
    timer_Share_Picture = startPolling(1000, &AppDelegate::Timer_Share_Picture_Routine);
}

void AppDelegate::Timer_Share_Picture_Routine()
{
    if (saveRequest.b_Save_Picture)
        return;
    if (timer_Share_Picture) {
        timer_Share_Picture->stop();
        timer_Share_Picture->deleteLater();
    }
    if (reportedRenderFailure())
        return;
    auto* sheet = new Window_Share(
        labels, [this] { return saveRequest.s_Saved_Take_Picture; }, [this] { Close_Share_Window(); }, window_.get());
    windowShare = sheet;
    sheet->show();
}

void AppDelegate::Close_Share_Window()
{
    if (windowShare)
        windowShare->close();
    windowShare = nullptr;
}

void AppDelegate::addEditAndPresetMenus()
{
    const Ui::MainWindow& ui = window_->ui();
    QAction* undo = history_->stack().createUndoAction(ui.menuEdit, tr("Undo"));
    QAction* redo = history_->stack().createRedoAction(ui.menuEdit, tr("Redo"));
    undo->setShortcuts(QKeySequence::Undo);
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    for (QAction* action : {undo, redo}) {
        action->setShortcutContext(Qt::ApplicationShortcut); // from floating panels too
        ui.menuEdit->addAction(action);
    }
    recent_ = new RecentPhotos(*settings_, ui.menuOpenRecent, [this](const QString& path) { openPhoto(path); });
    const auto refuse = [this](const QString& message) { showAlert({"Error", message, {"Close"}}); };
    presets_ = new PresetsMenu(ui.menuPresets, presetsFolder,
                               {[this] { return askPresetName(); },
                                [this, refuse](const QString& path) {
                                    QString error;
                                    if (!writeSettingsFile(path, state, error))
                                        refuse(error);
                                    return error.isEmpty();
                                },
                                [this](const QString& path, const QString& step) { applySettingsFile(path, step); },
                                refuse});
}

void AppDelegate::restoreWindowPlace()
{
    window_->restoreGeometry(settings_->value("window/geometry").toByteArray());
    window_->restoreState(settings_->value("window/panels").toByteArray());
}

void AppDelegate::saveWindowPlace()
{
    if (!window_ || !settings_)
        return;
    settings_->setValue("window/geometry", window_->saveGeometry());
    settings_->setValue("window/panels", window_->saveState());
    settings_->sync();
}

Edit AppDelegate::currentEdit() const
{
    return {state, reshaping};
}

// An undone or redone step: the settings and areas come back, the mouse
// modes stay, the panels show the values and the preview redraws once.
void AppDelegate::restoreEdit(const Edit& edit)
{
    EditingState restored = edit.state;
    restored.keepModesOf(state);
    state = restored;
    reshaping = edit.reshaping;
    showStateInPanels();
    showEffectsOn();
    viewPreview()->update();
}

void AppDelegate::recordChange(const QString& step)
{
    history_->record(currentEdit(), step.isEmpty() ? pendingStep_ : step);
    pendingStep_.clear();
}

// A settings file read as the command-line tool reads it (fields it leaves
// out take their starting values), as one step; a refused file changes
// nothing.
void AppDelegate::applySettingsFile(const QString& path, const QString& step)
{
    EditingState read;
    if (QString error; !readSettingsFile(path, read, error)) {
        showAlert({"Error", error, {"Close"}});
        return;
    }
    read.keepModesOf(state);
    state = read;
    showStateInPanels();
    showEffectsOn();
    viewPreview()->update();
    recordChange(step);
}

void AppDelegate::OnMenuOpenSettings()
{
    const QString path = chooseSettingsToOpen(lastOpenFolder_.isEmpty() ? QDir::homePath() : lastOpenFolder_);
    if (!path.isEmpty())
        applySettingsFile(path, tr("Open Settings"));
}
