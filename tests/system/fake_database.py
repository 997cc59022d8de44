"""What a fake server holds: accounts with their files, and locks."""
import re

FE = b"\xfe"
FREE, UPDATE, FILE_LOCK = 0, 2, 3


class File(dict):
    """Items as they are stored, under ids with a character for each byte. In a directory file that is what another
    program finds on disk, with line feeds; a name in foreign is listed and cannot be read."""

    def __init__(self, path, hashed):
        super().__init__()
        self.path, self.hashed, self.foreign = path, hashed, set()

    def odd(self, name):
        """A name of good length that this kind of file cannot hold."""
        return bool(re.search(r"[\0\xfb-\xff]" if self.hashed else r"[^ -~]", name))

    def item(self, name):
        stored = self[name]
        return stored if self.hashed else stored.removesuffix(b"\n").replace(b"\n", FE)

    def put(self, name, item):
        self[name] = item.replace(FE, b"\n") + b"\n" if item and not self.hashed else item

    def lines(self, name):
        return self.item(name).replace(b"\n", FE).decode("latin1").split("\xfe")


class Account(dict):
    """Files by name; the dictionary of BP is "DICT BP". VOC is a hashed file, with an entry for each of them."""

    def __init__(self, name, verbs):
        super().__init__()
        self.name, self.path = name, f"/accounts/{name}"
        self["VOC"] = File(f"{self.path}/VOC", True)
        self["VOC"].update({verb: f"V\xfeCA\xfe${verb}".encode("latin1") for verb in verbs})
        for file, hashed in (("VOC", True), ("BP", False), ("BP.OUT", False), ("ITEMS", True)):
            self.create(file, hashed)

    def create(self, name, hashed):
        self.setdefault(name, File(f"{self.path}/{name}", hashed))
        self["DICT " + name] = File(f"{self.path}/{name}.DIC", True)
        self["VOC"][name] = f"F\xfe{name}\xfe{name}.DIC".encode("latin1")
        return self[name]


class Locks:
    """Advisory: nothing but taking another one asks them. A key is path and id, without an id the whole file; a holder
    is a session with the file number that it took the lock through."""

    def __init__(self):
        self.held = {}
        self.limit = 100

    def take(self, session, number, key):
        """The number of the session in the way, or None when the lock is taken."""
        for place in (key, (key[0], None)):
            if others := set(self.held.get(place, (FREE, {}))[1]) - {session}:
                return min(others)
        if key not in self.held and len(self.held) >= self.limit:
            return 1
        self.held[key] = (UPDATE, {session: number} | self.held.get(key, (FREE, {}))[1])
        return None

    def free(self, session, number=None, key=None):
        for place, (_, holders) in list(self.held.items()):
            if session in holders and number in (None, holders[session]) and key in (None, place):
                del holders[session]
                if not holders:
                    del self.held[place]

    def state(self, session, key):
        """As told to that session, negative when others hold it, and the holder's number."""
        for place in ((key[0], None), key):
            state, holders = self.held.get(place, (FREE, {}))
            if holders:
                return (state, session) if session in holders else (-state, min(holders))
        return FREE, 0
