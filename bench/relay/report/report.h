#pragma once

#include "bench/relay/report/Results.h"

#include <ostream>
#include <vector>

/// The medians of all contenders, in the figures in which somebody was measured.
void printFigures(std::ostream& out, const Results& results,
                  const std::vector<Contender>& contenders);

/// Each goal of these figures with its verdict, and how many hold.
void printGoals(std::ostream& out, const Results& results);

/// Who is absent and what went wrong.
void printNotes(std::ostream& out, const Results& results,
                const std::vector<Contender>& contenders);
