// The DLL as a whole.
#pragma once

namespace vilnor_dll {

// Whether the DLL must stay loaded: an object or a lock is alive, a notification window still has
// its procedure here, or a thread keeps the object that received its notifications.
bool ModuleInUse();

// Gives the calling thread the real outside world; every object does so at its creation, since an
// apartment calls it on no other thread.
void UseSystemPlatform();

}  // namespace vilnor_dll
