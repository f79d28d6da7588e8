// The once-a-second tick of the main form: the wait for the model, then
// whether the model lies inside the project extent kept in the settings.
#pragma once

// The toolkit's default period.
constexpr int TIMER1_INTERVAL_MS = 1000;

void Timer1Timer();
