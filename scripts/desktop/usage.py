"""What a process uses of the machine and of the X server."""

import os

from Xlib.ext import res

_ALL_CLIENTS = 0


def memory(pid):
    """In kB, for the whole process: "Pss", "Rss", "Private_Dirty"..."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        fields = (line.split() for line in file)
        return {field[0].rstrip(":"): int(field[1]) for field in fields if len(field) == 3 and field[2] == "kB"}


def descriptors(pid):
    """How many files are open."""
    return len(os.listdir(f"/proc/{pid}/fd"))


def wake_ups(pid):
    """How often each thread has waited for something, by number and name."""
    counts = {}
    for task in os.listdir(f"/proc/{pid}/task"):
        try:
            with open(f"/proc/{pid}/task/{task}/status", encoding="ascii", errors="replace") as file:
                fields = dict(line.rstrip("\n").split(":\t", 1) for line in file if ":\t" in line)
        except FileNotFoundError:
            continue  # it has just ended
        counts[int(task), fields["Name"]] = int(fields["voluntary_ctxt_switches"])
    return counts


def x_resources(connection, pid):
    """How many windows, pixmaps, grabs... the process has on the X server, with all its connections."""
    asked = [{"client": _ALL_CLIENTS, "mask": res.LocalClientPIDMask}]
    clients = [found.spec.client for found in connection.res_query_client_ids(asked).ids if list(found.value) == [pid]]
    return sum(kind.count for client in clients for kind in connection.res_query_client_resources(client).types)
