"""Checks that includes follow the layers and run in no circle.

Folders are the architecture: a folder may include itself and what its row names, nothing else.
"""

import re
import subprocess
import sys

MAY_INCLUDE = {
    "Src/Vl/System": [],
    "Src/Vl/Common": ["Vl/System"],
    "Src/Vl/Graphics": [],
    "Src/Vl/HAL": ["Vl/System", "Vl/Common", "Vl/Graphics"],
    "Src/Tools/boardinfo": ["Vl/System", "Vl/Common", "Vl/HAL"],
    "Src/Tools/panelprobe": ["Vl/System", "Vl/Common", "Vl/Graphics", "Vl/HAL"],
    "Src/Tools/boardsim": [],
    "Src/Tools/overlayview": [],
}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def tracked_sources():
    listing = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "Src/*.h", "Src/*.cpp"],
        check=True, capture_output=True, text=True)
    return sorted(listing.stdout.split())


def wrong_layer(path, include):
    for folder, allowed in MAY_INCLUDE.items():
        if path.startswith(folder + "/"):
            own = folder.removeprefix("Src/")
            return not any(include.startswith(layer + "/") for layer in [own, *allowed])
    return False


def circle_from(start, graph):
    """A path from a header back to itself, or None."""
    stack, seen = [(start, [start])], set()
    while stack:
        node, path = stack.pop()
        for following in graph.get(node, []):
            if following == start:
                return path + [start]
            if following not in seen:
                seen.add(following)
                stack.append((following, path + [following]))
    return None


def main():
    graph, complaints = {}, []
    for path in tracked_sources():
        with open(path, encoding="utf-8") as source:
            includes = INCLUDE.findall(source.read())
        graph[path] = ["Src/" + include for include in includes]
        complaints += [f"{path}: may not include {include}" for include in includes if wrong_layer(path, include)]
    for path in graph:
        circle = circle_from(path, graph)
        if circle:
            complaints.append("circle: " + " -> ".join(circle))
    print("\n".join(complaints) if complaints else f"includes: {len(graph)} files follow the layers")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
