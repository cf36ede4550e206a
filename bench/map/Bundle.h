#pragma once
#include <ellery/SteamGen.h>

/// A round bundle of about this many tubes on a triangular pitch of 1, every tube marked: 8 colours, 26 symbols.
ellery::SteamGen bundle(int count);
