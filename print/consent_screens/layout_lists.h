#pragma once

#include "app/base/environment.h"
#include "db/tables/consent_layout_settings.h"
#include "print/consent_form/registered_forms.h"

class Messages;
class cT_ADODB;

/// The layouts that a user chooses among for one document and kind of treatment, in the form master's order.
using LayoutList = std::vector<RegisteredForm>;

/// The layouts of all documents and both kinds of treatment.
struct LayoutLists {
    std::vector<RegisteredForm> consentForms, letters;

    /// Letters serve a first request and later ones alike.
    LayoutList of(ConsentDocument document, bool acupuncture) const;
};

/// Reads a branch's layouts; a failure ends with the routine's label. Layouts whose number the settings'
/// columns cannot hold are left out.
Result<LayoutLists> readLayoutLists(cT_ADODB &db, const Branch &branch);

/// The first layout with the number chosen; nullptr when there is none, which has been said.
/// @param number of the choice; below 1: none was made
const RegisteredForm *resolveLayout(const LayoutList &layouts, qint32 number, Messages &messages);

/// Full path of a layout's file.
QString layoutFile(const Environment &environment, const RegisteredForm &layout);
/// Whether the file is there; if not, that has been said.
bool layoutFileIsThere(const Environment &environment, const RegisteredForm &layout);
