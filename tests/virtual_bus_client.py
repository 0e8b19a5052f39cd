#!/usr/bin/env python3
"""An independent Protocol 2.0 client, written from the public protocol documentation
with nothing but the standard library, that checks zelvar-virtual-bus end to end:
ping, read, write, reboot and factory reset over the bridge's pseudo-terminal; then
that the bridge ends cleanly on a signal and refuses options that make no sense.

Usage: virtual_bus_client.py PATH-TO-zelvar-virtual-bus
"""

import os
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time

INST_PING, INST_READ, INST_WRITE, INST_FACTORY_RESET, INST_REBOOT = 0x01, 0x02, 0x03, 0x06, 0x08
INST_STATUS = 0x55
BROADCAST = 0xFE
HEADER = b"\xff\xff\xfd\x00"


def crc16(data):
    """CRC-16/BUYPASS: polynomial 0x8005, initial value 0, no reflection."""
    crc = 0
    for byte in data:
        crc ^= byte << 8
        for _ in range(8):
            crc = ((crc << 1) ^ 0x8005) if crc & 0x8000 else (crc << 1)
            crc &= 0xFFFF
    return crc


def stuff(params):
    """Insert 0xFD after every FF FF FD inside the instruction and parameters."""
    out = bytearray()
    for byte in params:
        out.append(byte)
        if out[-3:] == b"\xff\xff\xfd":
            out.append(0xFD)
    return bytes(out)


def unstuff(body):
    return body.replace(b"\xff\xff\xfd\xfd", b"\xff\xff\xfd")


def instruction(servo_id, inst, params=b""):
    body = stuff(bytes([inst]) + params)
    packet = HEADER + bytes([servo_id]) + struct.pack("<H", len(body) + 2) + body
    return packet + struct.pack("<H", crc16(packet))


class Bus:
    def __init__(self, path, baud):
        self.fd = os.open(path, os.O_RDWR | os.O_NOCTTY)
        self.set_baud(baud)

    def set_baud(self, baud):
        attrs = termios.tcgetattr(self.fd)
        attrs[0] = 0  # iflag
        attrs[1] = 0  # oflag
        attrs[2] = termios.CS8 | termios.CREAD | termios.CLOCAL
        attrs[3] = 0  # lflag
        speed = getattr(termios, "B%d" % baud)
        attrs[4] = attrs[5] = speed
        attrs[6][termios.VMIN] = 0
        attrs[6][termios.VTIME] = 0
        termios.tcsetattr(self.fd, termios.TCSANOW, attrs)
        termios.tcflush(self.fd, termios.TCIOFLUSH)

    def read_exact(self, count, deadline):
        data = b""
        while len(data) < count:
            left = deadline - time.monotonic()
            if left <= 0:
                return None
            ready, _, _ = select.select([self.fd], [], [], left)
            if ready:
                data += os.read(self.fd, count - len(data))
        return data

    def status(self, timeout=0.5):
        """One status packet as (id, error, params), or None when nothing answers."""
        deadline = time.monotonic() + timeout
        window = b""
        while window != HEADER:
            byte = self.read_exact(1, deadline)
            if byte is None:
                return None
            window = (window + byte)[-4:]
        prefix = self.read_exact(3, deadline)
        if prefix is None:
            return None
        servo_id, length = prefix[0], struct.unpack("<H", prefix[1:])[0]
        rest = self.read_exact(length, deadline)
        if rest is None:
            return None
        packet = HEADER + prefix + rest
        expect(struct.unpack("<H", packet[-2:])[0] == crc16(packet[:-2]), "reply CRC")
        body = unstuff(rest[:-2])
        expect(body[0] == INST_STATUS, "status instruction")
        return servo_id, body[1], body[2:]

    def request(self, servo_id, inst, params=b"", timeout=0.5):
        os.write(self.fd, instruction(servo_id, inst, params))
        return self.status(timeout)

    def close(self):
        os.close(self.fd)


def expect(condition, what):
    if not condition:
        raise AssertionError(what)


def start_bridge(bridge_path, env, name, *options):
    bridge = subprocess.Popen([bridge_path, "--name", name, *options],
                              stdout=subprocess.PIPE, text=True, env=env)
    path = bridge.stdout.readline().strip()
    expect(path.startswith("/dev/"), "the bridge prints its terminal")
    return bridge, path


def check_session(bus):
    servo_id, error, _ = bus.request(1, INST_PING)
    expect((servo_id, error) == (1, 0), "ping answered")
    _, error, table = bus.request(1, INST_READ, struct.pack("<HH", 0, 118))
    expect(error == 0 and len(table) == 118, "118-byte read")
    expect(table[3] == 1 and table[4] == 1, "id and baud-rate code in the table")

    _, error, _ = bus.request(1, INST_WRITE, struct.pack("<HB", 5, 42))
    expect(error == 0, "write accepted")
    _, _, delay = bus.request(1, INST_READ, struct.pack("<HH", 5, 1))
    expect(delay == bytes([42]), "write took effect")
    _, error, _ = bus.request(1, INST_REBOOT)
    expect(error == 0, "reboot answered")
    _, error, _ = bus.request(1, INST_FACTORY_RESET, bytes([0x02]))
    expect(error == 0, "factory reset answered")
    _, _, delay = bus.request(1, INST_READ, struct.pack("<HH", 5, 1))
    expect(delay != bytes([42]), "factory reset restored the return delay")

    bus.set_baud(57600)
    expect(bus.request(3, INST_PING) is None, "the injected drop swallows one reply")
    _, error, _ = bus.request(3, INST_FACTORY_RESET, bytes([0xFF]))
    expect(error == 0, "full factory reset answered at the old id")
    bus.set_baud(1000000)
    servo_id, _, _ = bus.request(BROADCAST, INST_PING)
    expect(servo_id == 0, "after a full reset the servo is id 0 at 1,000,000 baud")
    servo_id, _, _ = bus.status()
    expect(servo_id == 1, "a broadcast ping is answered by every servo in turn")


def stop(bridge, listed, sig):
    """A bridge ended by `sig` exits normally and takes its port-list entry with it."""
    bridge.send_signal(sig)
    expect(bridge.wait(timeout=10) == 0, "the bridge ends cleanly on %s" % sig.name)
    expect(not os.path.lexists(listed) and not os.path.lexists(listed + ".pid"),
           "the bridge removes its port-list entry on %s" % sig.name)


def check_refused(bridge_path, env, option, value):
    done = subprocess.run([bridge_path, option, value], env=env, capture_output=True,
                          text=True, timeout=10)
    expect(done.returncode != 0 and value in done.stderr, "%s %s is refused" % (option, value))


def main():
    bridge_path = sys.argv[1]
    # A private runtime folder of its own, so that no real port list sees the test bus.
    runtime = tempfile.mkdtemp()
    env = dict(os.environ, XDG_RUNTIME_DIR=runtime)
    listed = os.path.join(runtime, "zelvar-virtual-bus", "client-test-bus")
    bridge, path = start_bridge(bridge_path, env, "client-test-bus", "--servo", "1@1000000",
                                "--servo", "3@57600", "--fault", "3:drop:1")
    try:
        expect(os.path.realpath(listed) == path, "the bridge lists itself")
        with open(listed + ".pid") as record:
            expect(int(record.read()) == bridge.pid, "the entry names the bridge's process")
        bus = Bus(path, 1000000)
        check_session(bus)
        bus.close()
        stop(bridge, listed, signal.SIGTERM)
        # Closing the terminal that runs a bridge hangs it up.
        bridge, _ = start_bridge(bridge_path, env, "client-test-bus")
        stop(bridge, listed, signal.SIGHUP)
        for value in ("999:drop:1", "2:drop:1", "1:drop:0", "1:drop:99999999999", "1:drop:101%"):
            check_refused(bridge_path, env, "--fault", value)
        check_refused(bridge_path, env, "--servo", "1@99999999999")
    finally:
        if bridge.poll() is None:
            bridge.kill()
        shutil.rmtree(runtime)
    print("PASS")


if __name__ == "__main__":
    main()
