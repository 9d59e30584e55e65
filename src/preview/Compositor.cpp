#include "Compositor.h"

#include "CompositorSteps.h"

#include <exception>
#include <new>

const QImage& Compositor::compose(const OpenedPhoto& photo, const Reshaping& reshaping, const EditingState& state)
{
    handles_ = {};
    if (photo.isEmpty()) {
        working_ = QImage();
        return working_;
    }
    ++passes_;
    CompositorPass pass{working_, record_, photo, reshaping, state, memos_, handles_};
    for (const CompositorStep& step : compositorSteps())
        if (step.runs(state))
            step.paint(pass);
    return working_;
}

const QImage* Compositor::tryCompose(const OpenedPhoto& photo, const Reshaping& reshaping, const EditingState& state,
                                     QString& failure)
{
    try {
        return &compose(photo, reshaping, state);
    } catch (const std::bad_alloc&) {
        failure = "there is not enough memory for a picture of this size";
    } catch (const std::exception& error) {
        failure = QString::fromLocal8Bit(error.what());
    }
    *this = Compositor();
    return nullptr;
}
