// The DLL as a whole.
#pragma once

namespace vilnor_dll {

// Whether the DLL must stay loaded: an object or a lock is alive, a notification window still has
// its procedure here, or a thread keeps the object that receives its notifications.
bool ModuleInUse();

// Sets the real platform for the calling thread. Every object does so at its creation: its
// apartment calls it on no other thread.
void UseSystemPlatform();

}  // namespace vilnor_dll
