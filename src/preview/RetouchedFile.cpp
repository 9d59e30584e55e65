#include "RetouchedFile.h"

#include "DLibWrapper.h"
#include "OpenedPhoto.h"
#include "PhotoDecoder.h"

namespace {

void lapAt(const StageLap& lap, const char* stage)
{
    if (lap)
        lap(stage);
}

} // namespace

WriteFailure writeRetouched(Compositor& compositor, const OpenedPhoto& photo, const PhotoEdits& photoEdits,
                            const EditingState& state, const QString& path, const PictureEncoding& encoding,
                            QStringList* warnings, const StageLap& lap)
{
    WriteFailure failure;
    const QImage* picture = compositor.tryCompose(photo, photoEdits, state, failure.composing);
    lapAt(lap, "compose");
    if (picture)
        failure.writing = writePicture(*picture, path, encoding, photo.metadata, warnings);
    lapAt(lap, "encode");
    return failure;
}

RenderOutcome renderPhotoFile(const QString& photo, const EditingState& state, const QString& output,
                              const PictureEncoding& encoding, const StageLap& lap, const FacePick& pick,
                              const std::optional<PhotoEditsOf>& done)
{
    const auto stage = [&](const char* name) { lapAt(lap, name); };
    RenderOutcome outcome;
    DLibWrapper::startReadingModel(); // while the photo is decoded
    DecodedPhoto decoded = decodePhoto(photo);
    stage("decode");
    outcome.warnings = decoded.warnings;
    if (!decoded.ok()) {
        outcome.message = decoded.error;
        outcome.tooLarge = decoded.tooLarge;
        return outcome;
    }
    outcome.photoSize = decoded.img_Basic.size();
    const OpenResult opened = analysePhoto(photo, std::move(decoded), pick);
    stage("analyse");
    outcome.faces = int(opened.faces.size());
    outcome.faceTaken = opened.photo.faceNumber;
    if (opened.outcome != OpenResult::Opened) {
        outcome.result = opened.outcome == OpenResult::NoFace         ? RenderOutcome::NoFace
                         : opened.outcome == OpenResult::SeveralFaces ? RenderOutcome::SeveralFaces
                         : opened.outcome == OpenResult::NoSuchFace   ? RenderOutcome::NoSuchFace
                                                                      : RenderOutcome::Unreadable;
        outcome.message = opened.message;
        return outcome;
    }
    outcome.facesRetouched = opened.photo.faceCount();
    const QString leftOut = leftOutFor(done, photo, opened.photo.imgSize.toSize());
    if (!leftOut.isEmpty())
        outcome.warnings << leftOut;
    const PhotoEdits edits = done && leftOut.isEmpty() ? done->edits : PhotoEdits::of(opened.photo.regions);
    Compositor compositor(Compositor::Once);
    const WriteFailure failure =
        writeRetouched(compositor, opened.photo, edits, state, output, encoding, &outcome.warnings, lap);
    if (!failure.composing.isEmpty()) {
        outcome.result = RenderOutcome::NotRendered;
        outcome.message = QString("The picture could not be rendered: %1.").arg(failure.composing);
    } else if (!failure.writing.isEmpty()) {
        outcome.result = RenderOutcome::NotWritten;
        outcome.message = QString("The picture could not be written to \"%1\": %2.").arg(output, failure.writing);
    } else {
        outcome.result = RenderOutcome::Written;
    }
    return outcome;
}
