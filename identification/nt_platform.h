// The question for the NT family.
#pragma once

/// Asks the system anew: 1 if it is of the NT family, else 0.
int Jw32IsNtPlatformNow();
