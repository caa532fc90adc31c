#pragma once

/// Gives the calling thread a locale of its own, American English in UTF-8 (it keeps the one it has where that is not
/// installed), for any value but 2. The result is 2 when the latest call of any thread said so, else 1.
int _configthreadlocale(int value);
