#pragma once

#include "BlemishMap.h"
#include "EffectPass.h"
#include "EffectSettings.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

// Heal blemishes: the spots a retoucher heals on the face's skin (what
// BlemishMap judges spots, as faint as Strength allows, as large as Size)
// are replaced by the skin around them, its fine texture kept, spots that
// touch as one area; moles, freckles and the rest stay, and no heal spills
// onto them. A spot clicked on the photo is healed too, a healed spot
// clicked is kept as it was, and a drag heals along its path. It heals the
// photo every later step reads.
struct HealBlemishes {
    using Settings = HealBlemishesSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 3, QT_TRANSLATE_NOOP("Effects", "Heal Blemishes"), true};
    static const PanelDescription& panel();

    struct Key {
        qint64 photo;
        float size;
        std::uint64_t strength;
        PointList healed, kept;
        QList<PointList> strokes;
        bool operator==(const Key&) const = default;
    };
    struct Search;
    struct SearchKey {
        qint64 photo;
        float size;
        bool operator==(const SearchKey&) const = default;
    };
    struct Memos {
        Memo<SearchKey, std::shared_ptr<const Search>> search; // Strength and the clicks only choose from it
        Memo<Key, OpenedPhoto> healed;
    };

    // "heal blemishes": the photo the later steps read becomes the healed one.
    static void heal(EffectPass& pass, const Settings& s, Memos& memos);

    // A spot healed: its centre in photo pixels (y from the top) and radius;
    // a spot found names its area among the marks found, and spots healed
    // as one area (they touch) share a cluster.
    struct Spot {
        QPointF centre;
        double radius;
        int area = 0;
        int cluster = 0;
    };
    // The spots healed on this photo with these settings and the spots
    // clicked on it.
    static std::vector<Spot> spotsOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits);

    // Every mark found on the face at this Size, placed in photo pixels, and
    // what was judged of it: what the healing chooses from.
    struct Judged {
        Spot spot;
        BlemishMark mark;
    };
    static std::vector<Judged> judgedMarks(const OpenedPhoto& photo, const Settings& s);

    // What the photo shows: the spots healed, and the marks kept — moles and
    // freckles for what they are, and where a found spot was clicked, at a
    // click's size.
    struct Outcome {
        std::vector<Spot> healed, kept;
    };
    static Outcome outcomeOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits);

    // The radius a click or a stroke heals, in photo pixels: half of Size.
    static double brushRadius(const OpenedPhoto& photo, const Settings& s);

    // A click at `percent` of the photo (y from the top) while editing
    // spots: a healed spot there is kept as it was, else a spot of the
    // current size is healed there. Says the step's name; nothing changed
    // (null) without a face.
    static constexpr const char* kHealSpot = QT_TRANSLATE_NOOP("EditHistory", "Heal Spot");
    static constexpr const char* kKeepSpot = QT_TRANSLATE_NOOP("EditHistory", "Keep Spot");
    static constexpr const char* kHealStroke = QT_TRANSLATE_NOOP("EditHistory", "Heal Stroke");
    static const char* click(const OpenedPhoto& photo, const Settings& s, PhotoEdits& edits, QPointF percent);

    // Its tool on the photo while Edit spots is on: a click heals or keeps
    // the spot under the pointer; a press that moved is no click.
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);
};
