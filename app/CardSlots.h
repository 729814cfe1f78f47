// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class HomeForm;

// The names of a module's card and star button on the home page, and the slots of theirs. The names do not
// follow from anything else, so they stand in a list.
struct CardSlots {
    using Slot = void (HomeForm::*)();

    int id;
    const char *card; // object names
    const char *star;
    Slot open;
    Slot toggle;
};

// Null for a module that has none; its card works all the same.
const CardSlots *cardSlots(int id);
