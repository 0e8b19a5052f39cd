#!/usr/bin/env python3
"""An independent Protocol 2.0 client, written from the public protocol documentation
with nothing but the standard library, that checks zelvar-virtual-bus end to end:
ping, read, write, reboot and factory reset over the bridge's pseudo-terminal.

Usage: virtual_bus_client.py PATH-TO-zelvar-virtual-bus
"""

import os
import select
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


def main():
    bridge_path = sys.argv[1]
    runtime = os.environ.get("XDG_RUNTIME_DIR") or tempfile.mkdtemp()
    os.environ["XDG_RUNTIME_DIR"] = runtime
    # The runtime folder must be private, or the bridge falls back to a shared one.
    os.chmod(runtime, 0o700)
    listed = os.path.join(runtime, "zelvar-virtual-bus", "client-test-bus")
    bridge = subprocess.Popen(
        [bridge_path, "--name", "client-test-bus", "--servo", "1@1000000",
         "--servo", "3@57600", "--fault", "3:drop:1"],
        stdout=subprocess.PIPE, text=True)
    try:
        path = bridge.stdout.readline().strip()
        expect(path.startswith("/dev/"), "the bridge prints its terminal")
        expect(os.path.realpath(listed) == path, "the bridge lists itself")
        bus = Bus(path, 1000000)

        servo_id, error, params = bus.request(1, INST_PING)
        expect((servo_id, error) == (1, 0), "ping answered")
        expect(struct.unpack("<H", params[:2])[0] == 0x0105, "model number in the ping")
        expect(bus.request(3, INST_PING) is None, "id 3 is silent at 1,000,000 baud")

        _, error, table = bus.request(1, INST_READ, struct.pack("<HH", 0, 118))
        expect(error == 0 and len(table) == 118, "118-byte read")
        expect(table[3] == 1 and table[4] == 1, "id and baud-rate code in the table")

        _, error, _ = bus.request(1, INST_WRITE, struct.pack("<HB", 5, 42))
        expect(error == 0, "write accepted")
        _, _, delay = bus.request(1, INST_READ, struct.pack("<HH", 5, 1))
        expect(delay == bytes([42]), "write took effect")
        _, error, _ = bus.request(1, INST_WRITE, struct.pack("<HB", 0, 1))
        expect(error == 7, "model number is read-only")

        _, error, _ = bus.request(1, INST_WRITE, struct.pack("<HB", 48, 1))
        expect(error == 0, "control enabled")
        _, error, _ = bus.request(1, INST_REBOOT)
        expect(error == 0, "reboot answered")
        _, _, enabled = bus.request(1, INST_READ, struct.pack("<HH", 48, 1))
        expect(enabled == b"\x00", "reboot disables control")

        _, error, _ = bus.request(1, INST_FACTORY_RESET, bytes([0x02]))
        expect(error == 0, "factory reset answered")
        _, _, delay = bus.request(1, INST_READ, struct.pack("<HH", 5, 1))
        expect(delay != bytes([42]), "factory reset restored the return delay")

        bus.set_baud(57600)
        expect(bus.request(1, INST_PING) is None, "id 1 is silent at 57,600 baud")
        expect(bus.request(3, INST_PING) is None, "the injected drop swallows one reply")
        servo_id, error, _ = bus.request(3, INST_PING)
        expect((servo_id, error) == (3, 0), "id 3 answers at 57,600 baud")
        _, error, _ = bus.request(3, INST_FACTORY_RESET, bytes([0xFF]))
        expect(error == 0, "full factory reset answered at the old id")
        bus.set_baud(1000000)
        servo_id, _, _ = bus.request(BROADCAST, INST_PING)
        expect(servo_id == 0, "after a full reset the servo is id 0 at 1,000,000 baud")
        servo_id, _, _ = bus.status()
        expect(servo_id == 1, "a broadcast ping is answered by every servo in turn")
        bus.close()
    finally:
        bridge.send_signal(signal.SIGTERM)
        code = bridge.wait(timeout=10)
    expect(code == 0, "the bridge ends cleanly on SIGTERM")
    expect(not os.path.lexists(listed), "the bridge removes its port-list entry")
    print("PASS")


if __name__ == "__main__":
    main()
