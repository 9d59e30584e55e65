#pragma once

#include "EffectPass.h"
#include "EffectSettings.h"
#include "FaceSkin.h"
#include "PanelDescription.h"
#include "PhotoTool.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

// Natural skin: the face's skin evened the way a careful retoucher evens it
// — blotches, redness and small shadows (its medium-size detail) taken
// down by Evenness, its pores and fine texture (below Detail size) kept as
// they are or scaled by Texture, the light that models the face (its
// coarse shading) left alone. Only the skin changes (FaceSkin: no eyes,
// brows, lips, nostrils, hair or background), with a soft edge; brushes
// add skin it missed or take away what is not skin. It evens the photo
// every later step reads, after the healing.
struct NaturalSkin {
    using Settings = NaturalSkinSettings;
    static constexpr auto effectSwitch = Settings::effectSwitch;
    static constexpr CatalogueRow row{Category::Face, 4, QT_TRANSLATE_NOOP("Effects", "Natural Skin"), true};
    static const PanelDescription& panel();

    // The brush's size and softness count only once something is brushed.
    struct SkinKey {
        qint64 photo;
        float brushSize;
        std::uint64_t softness;
        QList<PointList> added, removed;
        bool operator==(const SkinKey&) const = default;
    };
    struct BandKey {
        SkinKey skin;
        float detailSize;
        bool operator==(const BandKey&) const = default;
    };
    struct Key {
        BandKey band;
        std::uint64_t evenness, texture;
        bool operator==(const Key&) const = default;
    };
    // The skin as the brushes corrected it, the marks kept as they are in
    // it and what each brush painted, at the working scale.
    struct Skin {
        FaceSkin face;
        cv::Mat kept, added, removed;
    };
    // The skin's medium band at the working scale, and where it changes
    // with how much (the soft-edged skin).
    struct Band {
        FaceSkin skin;
        cv::Mat medium, weight;
    };
    struct Memos {
        Memo<SkinKey, Skin> skin; // Detail size does not change it
        Memo<BandKey, Band> band; // Evenness and Texture only scale it
        Memo<Key, OpenedPhoto> evened;
    };

    // "natural skin": the photo the later steps read becomes the evened one.
    static void even(EffectPass& pass, const Settings& s, Memos& memos);

    // The photo evened with these settings and the strokes of the skin
    // brushes (what `even` hands on).
    static OpenedPhoto evenedPhoto(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits = {});

    // Where it changes the photo and how much: the weight (CV_32F, 0 to 1)
    // over `area` (photo pixels), at the working scale.
    struct Mask {
        cv::Mat weight;
        cv::Rect area;
    };
    static Mask maskOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits);

    // Its brushes on the photo while Add skin or Remove skin is on: a drag
    // paints a stroke, a click a dab; each one undo step.
    static constexpr const char* kAddSkin = QT_TRANSLATE_NOOP("EditHistory", "Add Skin");
    static constexpr const char* kRemoveSkin = QT_TRANSLATE_NOOP("EditHistory", "Remove Skin");
    static void addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools);
};
