#include "Document.h"

Document::Document(const LocalisedLabels& labels, QObject* parent)
    : QObject(parent)
    , history_(labels, [this](const Edit& edit) { restore(edit); })
{
    history_.startAt(edit());
}

void Document::accept(OpenedPhoto opened)
{
    state.Reset_Variables();
    photo_ = std::make_shared<const OpenedPhoto>(std::move(opened));
    photoEdits = PhotoEdits::of(*photo_);
    history_.startAt(edit()); // the old photo's steps belong to its face
    ++revision_;
    emit photoReplaced();
    emit settingsReplaced();
}

void Document::changed(const Change& change)
{
    const SettingRange* range = change.kind == Change::Field ? settingRange(change.field) : nullptr;
    if (!range || range->draws)
        ++revision_;
    history_.record(edit(), change);
    emit edited(change);
}

void Document::moved()
{
    ++revision_;
    emit edited(Change::onPhoto({}));
}

void Document::gestureEnded(const QString& step)
{
    history_.record(edit(), Change::onPhoto(step));
}

void Document::replaceSettings(EditingState read, const QString& step, const PhotoEdits* edits)
{
    read.keepModesOf(state);
    state = read;
    if (edits) {
        // A settings file keeps what was done on the first face; the other
        // faces of a group keep their areas and rings and stay left out.
        PhotoEdits replaced = *edits;
        replaced.otherFaceShapes = photoEdits.otherFaceShapes;
        replaced.facesLeftOut = photoEdits.facesLeftOut;
        photoEdits = std::move(replaced);
    }
    wholeChange(step);
}

void Document::restoreDefaultsOf(bool EditingState::*effectSwitch, const QString& step)
{
    state.restoreDefaultsOf(effectSwitch);
    wholeChange(step);
}

void Document::resetUnderEyeRings(const QString& step)
{
    photoEdits.resetUnderEyeRings(photo_->regions, photo_->imgSize.height());
    changed(Change::onPhoto(step));
}

// A change of the whole edit that changed nothing needs no new picture.
void Document::wholeChange(const QString& step)
{
    if (!history_.record(edit(), Change::whole(step)))
        return;
    ++revision_;
    emit settingsReplaced();
    emit edited(Change::whole(step));
}

// An undone or redone step: the settings and areas come back, the mouse
// modes stay.
void Document::restore(const Edit& edit)
{
    EditingState restored = edit.state;
    restored.keepModesOf(state);
    state = restored;
    photoEdits = edit.photoEdits;
    ++revision_;
    emit settingsReplaced();
    emit edited(Change::whole({}));
}
