// SPDX-License-Identifier: MIT
#include "fuzz/Corpus.h"

#include "fuzz/StreamScenario.h"

using namespace ostrel;

TEST(Corpus, EveryKnownScenarioHoldsTogether) { playCorpus<StreamScenario>(QStringLiteral(STREAM_CORPUS)); }
