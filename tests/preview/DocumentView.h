#pragma once

#include "Document.h"
#include "RenderSession.h"
#include "View_Picture.h"

// A preview of a document of its own, as the window has one. Tests that set
// the state or what is done on the photo directly say so with changed(), as the panels
// and the mouse do.
struct DocumentView {
    explicit DocumentView(const OpenedPhoto& photo)
    {
        view.setDocument(&document, &session);
        open(photo);
    }

    void open(const OpenedPhoto& photo) { document.accept(OpenedPhoto(photo)); }
    void changed() { document.changed(Change::whole("a test's change")); }

    LocalisedLabels labels;
    Document document{labels};
    RenderSession session{document};
    View_Picture view;
    EditingState& state = document.state;
    PhotoEdits& photoEdits = document.photoEdits;
};
