#pragma once

struct Invocation;
class Console;

// One function per command of the tool; each returns the exit status.
namespace Commands {

int run(const Invocation &invocation, const Console &console);

int ports(const Invocation &invocation, const Console &console);
int scan(const Invocation &invocation, const Console &console);
int ping(const Invocation &invocation, const Console &console);
int reboot(const Invocation &invocation, const Console &console);
int reset(const Invocation &invocation, const Console &console);
int read(const Invocation &invocation, const Console &console);
int get(const Invocation &invocation, const Console &console);
int set(const Invocation &invocation, const Console &console);
int dump(const Invocation &invocation, const Console &console);
int monitor(const Invocation &invocation, const Console &console);
int save(const Invocation &invocation, const Console &console);
int load(const Invocation &invocation, const Console &console);

} // namespace Commands
