// Something that is done again and again leaves nothing behind.
#pragma once

#include "tests/support/Leaks.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::test
{

/// Expects that as much is alive after the last round as after the tenth.
/// @param controls window classes of the controls that a round makes: what the platform's own heap keeps of those is
/// measured without the library, and counts for nothing.
void expectNothingLeftBehind(int rounds, const std::vector<std::wstring>& controls,
                             const std::function<void(int round)>& use);

} // namespace korvane::test
