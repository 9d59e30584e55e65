#pragma once

#include "Compositor.h"
#include "EditingStateJson.h"
#include "PictureSaver.h"

#include <QString>
#include <QStringList>

#include <functional>

// The one way a retouched picture becomes a file, for the command-line
// tool's render and batches and for Save and Share in the window: composed
// at full size, encoded in the chosen format with the photo's colour
// profile and metadata, written through a temporary file renamed into
// place. Nothing is written as one format and read back for another.

// Why a picture could not be written: it could not be composed (no memory)
// or not be written (the disk); both empty when it was written.
struct WriteFailure {
    QString composing, writing;
    bool any() const { return !composing.isEmpty() || !writing.isEmpty(); }
};

// Called after each stage of a render ("decode", "analyse", "compose",
// "encode") when given.
using StageLap = std::function<void(const char* stage)>;

// Writes the retouched picture of an open photo with the compositor given
// (which keeps what it computed for the next picture). Metadata that could
// not be written is left out and said in `warnings` when given.
WriteFailure writeRetouched(Compositor& compositor, const OpenedPhoto& photo, const PhotoEdits& photoEdits,
                            const EditingState& state, const QString& path, const PictureEncoding& encoding,
                            QStringList* warnings = nullptr, const StageLap& lap = {});

// A photo's file rendered into a picture file: decoded, analysed (exactly
// one face), composed and written as above.
struct RenderOutcome {
    enum Result { Written, Unreadable, NoFace, SeveralFaces, NotRendered, NotWritten, NoSuchFace };
    Result result = Unreadable;
    int faces = 0, faceTaken = 0; // faces found, and which was retouched (1-based)
    int facesRetouched = 0;
    QSize photoSize;              // the upright photo's, once decoded
    QString message;     // why, naming the file, when not written
    QStringList warnings; // what was left out of the photo or the picture
    bool tooLarge = false; // refused for its size before it was decoded
};

// What a settings file kept of one photo (`done`) is used when it belongs
// to this photo, and said to be left out otherwise.
RenderOutcome renderPhotoFile(const QString& photo, const EditingState& state, const QString& output,
                              const PictureEncoding& encoding, const StageLap& lap = {}, const FacePick& pick = {},
                              const std::optional<PhotoEditsOf>& done = {});
