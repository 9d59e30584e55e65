#pragma once

#include <QString>

// What a change of the edit was, said by whoever made it: one field of the
// settings list (by its name), what was done on the photo (areas moved, spots clicked), or the whole
// edit at once (Defaults, a settings file, a preset, an undone step). The
// preview recomposes from it and the Edit menu names its step after it.
struct Change {
    enum Kind { Field, OnPhoto, Whole };
    Kind kind = Whole;
    const char* field = nullptr; // a Field's name in the settings list
    QString step;                // the step's name where it is not the field's own

    static Change of(const char* field) { return {Field, field, {}}; }
    // A field changed by one deliberate act, a step of its own.
    static Change act(const char* field, const QString& step) { return {Field, field, step}; }
    static Change onPhoto(const QString& step) { return {OnPhoto, nullptr, step}; }
    static Change whole(const QString& step) { return {Whole, nullptr, step}; }
};
