#pragma once

// The artwork is compiled into the static core library, whose resource registration the
// linker would otherwise drop; the program and the tests call this once at start.
void InitResources();
