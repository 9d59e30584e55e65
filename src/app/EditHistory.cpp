#include "EditHistory.h"

#include "EffectCatalogue.h"

#include <QCoreApplication>

namespace {

using Clock = std::chrono::steady_clock;

// Equal as far as Undo is concerned: the modes do not count.
bool sameEdit(const Edit& a, Edit b)
{
    b.state.keepModesOf(a.state);
    return a.reshaping == b.reshaping && a.state == b.state;
}

QString tr(const char* text)
{
    return QCoreApplication::translate("EditHistory", text);
}

} // namespace

// One step; Qt's stack calls redo() once on push, when the change has
// already been made in the window.
class EditStep : public QUndoCommand {
public:
    EditStep(EditHistory& history, Edit before, Edit after, const QString& name, int key)
        : QUndoCommand(name)
        , history_(history)
        , before_(std::move(before))
        , after_(std::move(after))
        , key_(key)
        , at_(Clock::now())
    {
    }
    void undo() override { history_.put(before_); }
    void redo() override
    {
        if (done_)
            history_.put(after_);
        done_ = true;
    }
    int id() const override { return key_; }
    bool mergeWith(const QUndoCommand* other) override
    {
        const auto* next = static_cast<const EditStep*>(other);
        if (next->at_ - at_ > EditHistory::kMergeWindow)
            return false;
        after_ = next->after_;
        at_ = next->at_;
        setObsolete(sameEdit(before_, after_)); // dragged back where it started
        return true;
    }

private:
    EditHistory& history_;
    Edit before_, after_;
    int key_;
    Clock::time_point at_;
    bool done_ = false;
};

EditHistory::EditHistory(const LocalisedLabels& labels, std::function<void(const Edit&)> restore)
    : labels_(labels)
    , restore_(std::move(restore))
{
}

void EditHistory::startAt(const Edit& now)
{
    stack_.clear();
    last_ = now;
}

void EditHistory::record(const Edit& now, const QString& name)
{
    if (sameEdit(last_, now))
        return;
    auto [described, key] = describeChange(last_, now, labels_);
    if (!name.isEmpty())
        key = -1;
    stack_.push(new EditStep(*this, last_, now, name.isEmpty() ? described : name, key));
    last_ = now;
}

void EditHistory::put(const Edit& edit)
{
    last_ = edit;
    restore_(edit);
}

// A field of `to` beside the field `value` of `from`: the same member of
// another object of the same type.
template <typename Value>
const Value& sameFieldOf(const EditingState& to, const EditingState& from, const Value& value)
{
    const auto offset = reinterpret_cast<const char*>(&value) - reinterpret_cast<const char*>(&from);
    return *reinterpret_cast<const Value*>(reinterpret_cast<const char*>(&to) + offset);
}

QString switchStep(const char* name, bool on, const LocalisedLabels& labels)
{
    for (bool EditingState::*effectSwitch : switchesInCloseOrder())
        if (qstrcmp(nameOfSwitch(effectSwitch), name) == 0)
            return (on ? tr("%1 On") : tr("%1 Off")).arg(labels.*effectWithSwitch(effectSwitch)->label);
    return {};
}

std::pair<QString, int> describeChange(const Edit& before, const Edit& after, const LocalisedLabels& labels)
{
    if (!(before.reshaping == after.reshaping)) {
        const bool cheeks = !(before.reshaping.rect_Cheek_Left_Area_To_Paint == after.reshaping.rect_Cheek_Left_Area_To_Paint
                              && before.reshaping.rect_Cheek_Right_Area_To_Paint
                                     == after.reshaping.rect_Cheek_Right_Area_To_Paint);
        return {cheeks ? tr("Move Blush Area") : tr("Move Under-Eye Ring"), -1};
    }
    EditingState from = before.state;
    QStringList changed;
    int key = -1, index = 0;
    from.forEachField([&](const char* name, auto& value) {
        ++index;
        if (value == sameFieldOf(after.state, from, value))
            return;
        const SettingRange* range = settingRange(name);
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            if (!range) {
                changed << switchStep(name, !value, labels);
                return;
            }
        if (range && range->step) {
            changed << tr(range->step);
            key = index;
        }
    });
    if (changed.size() == 1)
        return {changed.first(), key};
    return {tr("Change Settings"), -1};
}
