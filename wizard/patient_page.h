// Page "PatDat": the patient's name and address, the type of diabetes and the kind of therapy.
#pragma once

#include "database/patient.h"
#include "wizard/context.h"

namespace wizard {

/// Fills the lists of diabetes types and therapy kinds; item data are the numbers that the patient record holds.
void fill_patient_lists(Context& context);
/// Needs the lists. A number that a list does not have selects nothing in it, an unknown gender no option.
void show_patient(Context& context, const database::PatientRecord& patient);
/// Takes the page's fields over into the record; a list without a selection and options of which none is
/// chosen leave their number as it was.
void gather_patient(const form::Form& form, database::PatientRecord& patient);
/// False, after saying why, where first name or name is blank; the field has the focus then.
bool check_patient(Context& context);

}  // namespace wizard
