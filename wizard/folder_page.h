// Page "netpath": the folder of the patient databases, on this computer or shared.
#pragma once

#include "wizard/context.h"

namespace wizard {

/// Shows the folder and says whether it lies on a network drive.
void show_folder(Context& context);

/// `cmdPath` Click. Button 0 asks for the folder of a new shared database, which must hold no index yet, button 1 for
/// that of an existing one. A cancelled or refused choice changes nothing.
void choose_folder(Context& context, int button);

}  // namespace wizard
