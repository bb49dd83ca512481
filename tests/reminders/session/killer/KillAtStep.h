#pragma once

/// Kills this process right before the so-many-th step from now on; 0 lets it live. A step is a message sent or a
/// change made to a file. Also set at the start, by the environment's KILL_AT_STEP. KILL_BEFORE names a method: the
/// process is killed right before it sends a call of it.
extern "C" void killAtStep(int steps);
