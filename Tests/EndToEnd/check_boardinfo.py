"""Checks what boardinfo --json says of boards against the descriptions of these boards, field by field.

    check_boardinfo.py SCHEMA DIRECTORY

For every NAME.board.json in the directory there is what boardinfo printed, NAME.report.json, its exit status,
NAME.status, and the kind of board that it was told, NAME.kind. Every report is valid against the schema, has no
member that the schema does not know, and says what the description lets expect.
"""

import json
import math
import pathlib
import re
import sys
import time

import jsonschema

NOT_PRESENT = {"state": "not present"}
FAILED = {"state": "failed"}
LIMITS = {"fpga": 95, "tile_0": 95, "tile_1": 95, "sdi": 80, "fan": 60, "oled": 50, "ethernet": 75}
PHY_IDS = {"dp83867": "0x2000A231", "88e1510": "0x01410DD1"}
PLENTY_OF_SECONDS = 60


def ok(value=None, unit=None, **more):
    row = {"state": "ok"}
    if value is not None:
        row["value"] = value
    if unit is not None:
        row["unit"] = unit
    return {**row, **more}


def silent(is_there):
    return dict(FAILED if is_there else NOT_PRESENT)


def number(value):
    return int(value, 0) if isinstance(value, str) else value


def hexadecimal(value, digits):
    return f"0x{value:0{digits}X}"


def matching(pattern):
    return lambda text: isinstance(text, str) and re.fullmatch(pattern, text) is not None


def version_text(words):
    first, second, third = words
    text = f"CT: 0x{first >> 24:02X} Ver: {first >> 8 & 0xFFFF:04X}.{first & 0xFF:02X}.{second & 0xFFFF:04X}"
    date = f" ({second >> 16 & 31:02d}/{second >> 21 & 15:02d}/{2000 + (second >> 25):4d})"
    if third >> 31:
        return f"{text} [{third >> 16 & 0xFFF:02d}.{third & 0xFFFF:02d}]{date}"
    if third:
        dirty = "-dirty" if third >> 30 else ""
        return f"{text}{date} [{third & 0x3FFFFFFF:07x}{dirty}]"
    return text + date


def without_revision(words):
    return [*words[:2], words[2] if words[2] >> 31 else 0]


def from_hardware(words):
    """What a "cardid" core says: its months count from 0."""
    words = without_revision(words)
    month = (words[1] >> 21 & 15) + 1 & 15
    return [words[0], words[1] & ~(15 << 21) | month << 21, words[2]]


def date_text(seconds):
    return time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(seconds)) if seconds else "never"


def is_ean(digits):
    return digits != 0 and sum(int(d) * (3 if i % 2 else 1) for i, d in enumerate(reversed(str(digits)))) % 10 == 0


def words_of(data):
    return [int.from_bytes(data[i:i + 4], "little") for i in range(0, 12, 4)]


class Board:
    """What a description lets expect of a report."""

    def __init__(self, description, kind):
        self.board = description
        self.is_orca = kind == "orca"
        i2c = description.get("i2c", {})
        self.devices = {device["name"]: device for device in i2c.get("devices", []) if device.get("name")}
        self.buses = {bus["name"]: bus["number"] for bus in i2c.get("buses", []) if bus.get("name")}
        self.places = {(device["bus"], number(device["address"])): device for device in i2c.get("devices", [])}

    def core(self, pattern, device="fpga"):
        """The address of the first core that has the name; None where it cannot be used."""
        ending = pattern[1:] if pattern.startswith("*") else None
        for core in (self.board.get(device) or {}).get("cores", []):
            if core["name"] == pattern or ending and core["name"].endswith(ending):
                return number(core["addresses"][0]) & ~0x3F if core["addresses"] else None
        return None

    def identity(self):
        return {**self.rom(), "unique_number": self.unique_number(), "switch_card_id": NOT_PRESENT,
                "switch_card_serial": NOT_PRESENT, "switch_card_number": NOT_PRESENT,
                "fpga_version": self.fpga_version(), "cpld_version": self.cpld_version()}

    def rom(self):
        rom = self.board.get("rom")
        names = ["identity_rom", "card_id", "card_serial", "mac_0", "mac_1"]
        if rom is None:
            return {name: NOT_PRESENT for name in names}
        version = [number(word) for word in rom["version"]]
        serial = rom["serial"]
        is_valid = rom["macs"][0].lower().startswith("02:00:5e") and version[0] >> 24 == 0x80 and \
            is_ean(serial["number"])
        return {"identity_rom": ok("valid") if is_valid else FAILED,
                "card_id": ok(version_text(without_revision(version))),
                "card_serial": ok(f'{serial["number"]:013d}', produced=date_text(serial["produced"]),
                                  serviced=date_text(serial["serviced"])),
                "mac_0": ok(rom["macs"][0].upper()), "mac_1": ok(rom["macs"][1].upper())}

    def sensors(self, buses=None):
        return [sensor for bus in self.board.get("w1_buses", [])[:buses] for sensor in bus.get("sensors", [])]

    def unique_number(self):
        if not self.sensors():
            return NOT_PRESENT
        unprogrammed = [s for s in self.sensors(1) if number(s["user_data"]) == 0]
        chosen = unprogrammed if len(unprogrammed) == 1 else self.sensors()
        return ok(f'{min(number(s["serial"]) for s in chosen):012X}2200')

    def fpga_version(self):
        if self.core("cardid") is None:
            return NOT_PRESENT
        return ok(version_text(from_hardware([number(w) for w in self.board["fpga"].get("card_id", [0, 0, 0])])))

    def cpld_version(self):
        address = self.core("cardid", "cpld")
        if address is None:
            return NOT_PRESENT
        words = [number(word) for word in self.board["cpld"]["words"]][address // 4:address // 4 + 3]
        return ok(version_text(from_hardware((words + [0, 0, 0])[:3])))

    def eeprom(self):
        names = ["device_serial", "device_digits", "device_value_1", "device_value_2", "pcb_version",
                 "pcb_revision"]
        memory = self.devices.get("eeprom")
        if not self.is_orca or memory is None:
            return {name: NOT_PRESENT for name in names}
        rows = {name: FAILED for name in names}
        identity = memory.get("identity", {})
        if (device := identity.get("device")) is not None:
            low = [number(value) & 0xFFFFFFFF for value in device["values"]]
            rows.update(device_serial=ok(str(device["serial"])),
                        device_digits=ok(f'{device["serial"]:013d}{number(device["suffix"]):05x}'),
                        device_value_1=ok(low[0]), device_value_2=ok(low[1]))
        if (pcb := identity.get("pcb")) is not None:
            rows.update(pcb_version=ok(hexadecimal(pcb["minor"] | pcb["major"] << 8 | 0x03000000, 8)),
                        pcb_revision=ok(hexadecimal(int(pcb["revision"], 16), 3)))
        return rows

    def cores(self, device):
        return [{"name": core["name"], **ok(version=hexadecimal(number(core["version"]), 8), addresses=[
            hexadecimal(number(address) & ~0x3F, 8) for address in core["addresses"]])}
            for core in (self.board.get(device) or {}).get("cores", [])]

    def chips_on_1_wire(self):
        chips = []
        for bus, part in enumerate(self.board.get("w1_buses", []), 1):
            for sensor in part.get("sensors", []):
                is_read = sensor["celsius"] != -1 / 16  # the driver's "no reading"
                row = ok(sensor["celsius"], "°C") if is_read else FAILED
                chips.append((number(sensor["serial"]), 0x22, {**row, "kind": "thermometer", "bus": bus}))
            for eeprom in part.get("eeproms", []):
                data = {record["offset"]: bytes.fromhex(record["data"]) for record in eeprom["records"]}
                row = FAILED
                if 0 in data and 18 in data:
                    row = ok(version_text(words_of(data[18])), serial=str(int.from_bytes(data[0][:8], "little")))
                chips.append((number(eeprom["serial"]), 0x2D, {**row, "kind": "EEPROM", "bus": bus}))
        chips.sort(key=lambda chip: chip[:2])
        return [{"name": f"{family:02x}-{serial:012x}", **row} for serial, family, row in chips]

    def names_on_i2c(self):
        names = {name: ok(f"i2c-{bus}", kind="bus") for name, bus in self.buses.items()}
        for name, device in self.devices.items():
            names[name] = ok(f'{device["bus"]}-{number(device["address"]):04x}', kind="device")
        return [{"name": name, **names[name]} for name in sorted(names)]

    def die(self, core):
        if self.core(core) is None:
            return NOT_PRESENT
        parts = {part["core"]: part["celsius"] for part in self.board.get("temperatures", [])}
        return ok(parts.get(core, 0), "°C")

    def sensor(self, name, bus_name):
        device = self.devices.get(name)
        if device is None:
            return NOT_PRESENT
        bus = device["bus"] if bus_name is None else self.buses.get(bus_name)
        felt = self.places.get((bus, number(device["address"])))
        if felt is None or felt["chip"] != "temperature-sensor":
            return FAILED
        return ok(math.trunc(felt.get("celsius", 0)), "°C")

    def temperatures(self):
        if not self.is_orca:
            rows = {name: NOT_PRESENT for name in LIMITS}
            if self.core("misc_pio") is not None:
                rows["fpga"] = ok(self.board.get("misc", {}).get("celsius", -128), "°C")
            return rows
        rows = {"fpga": self.die("subsys_hps_pio_temp_fpga"), "tile_0": self.die("subsys_hps_pio_temp_tile0"),
                "tile_1": self.die("subsys_hps_pio_temp_tile1"), "sdi": self.sensor("sdi_temp", None),
                "fan": self.sensor("fan_radial_temp", "fan"), "oled": self.sensor("fan_oled_temp", "fan"),
                "ethernet": self.sensor("eth_temp", "syn_eth")}
        return {name: {**row, "limit": LIMITS[name]} if row["state"] == "ok" else row
                for name, row in rows.items()}

    def card_sensors(self):
        sensors = sorted((s["device"], s["sensor"], s["millidegrees"]) for s in self.board.get("hwmon", []))
        return [{"name": f"hwmon{device} temp{sensor}", **ok(value / 1000, "°C")}
                for device, sensor, value in sensors]

    def expander(self, device, is_there):
        port = matching("0x[0-9A-F]{2}")
        return ok(port_a=port, port_b=port) if device and device["chip"] == "expander" else silent(is_there)

    def expanders(self):
        cages = ["qsfp0_0", "qsfp0_1", "qsfp1_0", "qsfp1_1"]
        if not self.is_orca:
            return {name: NOT_PRESENT for name in [*cages, "led_sync", "eth_led"]}
        rows = {bus: self.expander(self.places.get((self.buses.get(bus), 0x3E)), bus in self.buses)
                for bus in cages}
        return rows | {name: self.expander(self.devices.get(name), name in self.devices)
                       for name in ["led_sync", "eth_led"]}

    def phys_on_mdio(self):
        if self.core("ethernet_mdio") is None:
            return []
        phys = sorted((phy["address"], phy["model"]) for phy in self.board["mdio"]["phys"])
        return [{"name": f"PHY {address}", **self.phy(model)} for address, model in phys]

    @staticmethod
    def phy(model):
        """A PHY has its link whether or not the wire behind its interface is plugged in."""
        return ok(1000, "Mbit/s", link="up", id=PHY_IDS[model])

    def configuration_phys(self):
        ports = {port["interface"]: port for port in self.board.get("mii_ports", [])}
        rows = {}
        for index in range(2):
            interface, address = ("eth0", index) if self.is_orca else (f"eth{index}", 0)
            port = ports.get(interface)
            is_there = port is not None and port["phy"]["address"] == address
            rows[f"port_{index}"] = self.phy(port["phy"]["model"]) if is_there else NOT_PRESENT
        return rows

    def sync(self):
        if self.core("*central_sync") is None:
            return {name: NOT_PRESENT for name in ["sync_word", "sync_id", "sync_master", "is_master", "time_code"]}
        settings = self.board.get("sync", {}).get("settings", {})
        bits = "".join(f"{number(byte):02X}" for byte in settings.get("time_code", {}).get("user_bits", [0] * 4))
        return {"sync_word": ok(matching("0x0000[0-9A-F]{4}")),
                "sync_id": ok(hexadecimal(number(settings.get("id", 0)), 14)),
                "sync_master": ok(hexadecimal(number(settings.get("master_id", 0)), 14)),
                "is_master": ok(settings.get("is_master", False)),
                "time_code": self.is_time_code(settings, bits)}

    @staticmethod
    def is_time_code(settings, bits):
        start = settings.get("time_code", {"seconds": 0, "frames": 0})
        rate = settings.get("frame_rate", 30)

        def is_right(row):
            hours, minutes, seconds, frames = (int(part) for part in row["value"].split(":"))
            passed = (hours * 3600 + minutes * 60 + seconds - start["seconds"]) % 86400 * rate + \
                frames - start["frames"]
            return 0 <= passed <= PLENTY_OF_SECONDS * rate and frames < rate and \
                row["milliseconds"] == frames * 1000 // rate and \
                row == ok(row["value"], milliseconds=row["milliseconds"], user_bits=bits)
        return is_right

    def links(self):
        ports = {port["interface"]: port.get("carrier", True) for port in self.board.get("mii_ports", [])}
        inband = self.board.get("inband")
        rows = {}
        for index in range(2):
            has_carrier = ports.get(f"eth{index}")
            rows[f"eth{index}"] = NOT_PRESENT if has_carrier is None else \
                ok("up" if has_carrier else "down", in_band=has_carrier and bool(inband and inband.get("slave")))
            lengths = (inband or {}).get("fibre_lengths", [])
            rows[f"fibre_{index}"] = ok(lengths[index]) if index < len(lengths) else silent(inband is not None)
        is_count = lambda value: isinstance(value, int) and value >= 0
        rows["pattern"] = ok(is_count, "bytes sent") if self.board.get("pattern") else NOT_PRESENT
        return rows

    def report(self):
        report = {"schema": 1, "board": "orca" if self.is_orca else "hd24", "identity": self.identity(),
                  "eeprom": self.eeprom(), "fpga_cores": self.cores("fpga"), "cpld_cores": self.cores("cpld"),
                  "chips_on_1_wire": self.chips_on_1_wire(), "names_on_i2c": self.names_on_i2c(),
                  "temperatures": self.temperatures(), "card_sensors": self.card_sensors(),
                  "expanders": self.expanders(), "phys_on_mdio": self.phys_on_mdio(),
                  "configuration_phys": self.configuration_phys(), "sync": self.sync(), "links": self.links()}
        rows = [row for section in report.values() if isinstance(section, (dict, list))
                for row in (section.values() if isinstance(section, dict) else section) if not callable(row)]
        report["ok"] = all(row["state"] != "failed" for row in rows)
        return report


def differences(expected, found, place=""):
    if callable(expected):
        return [] if expected(found) else [f"{place}: {found!r} cannot be"]
    if isinstance(expected, dict) and isinstance(found, dict):
        return [difference for key in expected | found for difference in (
            differences(expected[key], found[key], f"{place}.{key}") if key in expected and key in found
            else [f"{place}.{key}: " + ("missing" if key in expected else f"{found[key]!r} is not expected")])]
    if isinstance(expected, list) and isinstance(found, list) and len(expected) == len(found):
        return [difference for index, pair in enumerate(zip(expected, found))
                for difference in differences(*pair, f"{place}[{index}]")]
    return [] if expected == found else [f"{place}: {found!r} instead of {expected!r}"]


def closed(schema):
    """The same schema without room for members that it does not know. Only leaves may have a $ref beside."""
    if isinstance(schema, list):
        return [closed(part) for part in schema]
    if not isinstance(schema, dict):
        return schema
    tight = {key: closed(part) for key, part in schema.items()}
    if "properties" in schema and (schema.get("type") == "object" or "$ref" in schema) and "$defs" not in schema:
        tight["unevaluatedProperties"] = False
    return tight


def main():
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
    tight = closed({key: part for key, part in schema.items() if key != "$defs"}) | {"$defs": schema["$defs"]}
    validator = jsonschema.Draft202012Validator(tight)
    complaints = []
    boards = sorted(pathlib.Path(sys.argv[2]).glob("*.board.json"))
    for path in boards:
        name = path.name.removesuffix(".board.json")
        read = lambda kind: path.with_name(f"{name}.{kind}").read_text(encoding="utf-8")
        report = json.loads(read("report.json"))
        expected = Board(json.loads(path.read_text(encoding="utf-8")), read("kind")).report()
        found = [f"schema: {error.json_path}: {error.message}" for error in validator.iter_errors(report)]
        found += differences(expected, report)
        found += differences(0 if expected["ok"] else 1, int(read("status")), "status")
        complaints += [f"{name}: {complaint}" for complaint in found]
    print("\n".join(complaints))
    print(f"{len(boards)} boards")
    sys.exit(1 if complaints or not boards else 0)


if __name__ == "__main__":
    main()
