#pragma once

/// Kills this process right before the so-many-th step from now on; 0 lets it live. A step is a message sent or a
/// change made to a file. Also set at the start, by the environment's KILL_AT_STEP.
extern "C" void killAtStep(int steps);
