// The installed settings written down as an answer file, so that a till set up once with the
// wizard can be replayed on the others.
#pragma once

#include "settings/ccaddin_registry.h"

#include <string>

// UTF-8 text with CR LF line ends: [ccaddin] with every setting in field order. The password is
// left out (a comment says so): an exported file is copied around and must not carry it.
std::string exportAnswers(const TCcAddinRegistry& settings);
