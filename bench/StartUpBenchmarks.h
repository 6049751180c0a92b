#pragma once

// The body of `kavelin-bench --startup-probe with|without`: boots the host in
// this fresh process, with or without the extension, and prints the CPU
// seconds of loading, of installing the hooks, the number of hooks, and of
// booting. Answers the exit status.
int runStartUpProbe(bool withExtension);
