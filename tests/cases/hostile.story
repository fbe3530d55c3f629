# Files of a megabyte that are made to cost as much time or memory as they can: each ends soon, in little memory, by itself.
file make
  import struct, sys
  size, name, folder = 1 << 20, sys.argv[1], "<folder>/"
  def i32(*values): return struct.pack(f"<{len(values)}i", *values)
  def text(value, length): return value.encode().ljust(length, b"\0")
  def filled(part, first=b""):
      parts, i, length = [first], 1, len(first)
      while length < size:
          parts.append(part(i) if callable(part) else part)
          length, i = length + len(parts[-1]), i + 1
      return b"".join(parts)
  def header(count, records=1):
      return i32(records, 1, 1, 0, 1, count) + b"".join(text(folder + each, 256) for each in ("out.csv", "out.fif", "")) + bytes(228)
  def item(n): return i32(n) + text("N" * 63, 64) + bytes(28) + i32(4, 0, 1, 1, 12, 0, 0) + bytes(12)
  def start(n, elements=1, attribute=4, format="%U", type=2):
      return i32(n, elements, 1, attribute, 0, 1, 1, 0) + bytes(52) + text("1", 24) + text(format, 256) + i32(0, type, 0, 0)
  def column(n, path="", **more): return start(n, **more) + i32(0, 0, 0) + text(path, 268)
  def element(kind=901, width=1):
      return i32(1, kind, 0, width, 1, 0) + bytes(156) + text("U", 132) + text("1", 132) + text("9", 132) + i32(8, 0, 0) + bytes(20)
  def levels(count, columns, magic="TAMBO DATA FORMAT V3L1"):
      begin = 44 + 32 * count
      head = text(magic, 24) + i32(1, 0, count, 0, 0)
      return filled(column(1) + element(), head + b"".join(i32(n, begin, 1, max(size - begin, 0), columns, 0, 0, 0) for n in range(1, count + 1)))[:size]
  def level(area, columns, magic="TAMBO DATA FORMAT V3L1"):
      return text(magic, 24) + i32(1, 0, 1, 0, 0) + i32(1, 76, 1, len(area), columns, 0, 0, 0) + area
  old, many, listed = "TAMBO DATA FORMAT V2L1", (size - 44) // 32, column(1, folder + "list.txt", type=4) + element()
  numbers, items = i32(*range(1, 1001)), b"".join(map(item, range(1, 1001)))
  run, long, settings, values = header(1000) + numbers, header(1000) + items, level(column(1) + element(), 1), b"1\n2\n"
  if name == "item in every field": run, long, settings = header(size // 4) + filled(i32(1)), header(1) + item(1), level(listed, 1)
  if name == "items without settings": run, long = header(size // 4) + filled(i32), header(size // 136) + filled(item)
  if name == "items that are not there": run, long = header(0x7FFFFFFF) + filled(i32(1)), header(0x7FFFFFFF) + filled(item)
  if name == "many items": settings = level(filled(lambda n: column(n) + element()), size // 1268)
  if name == "many elements": settings = level(filled(element(905, 66), column(1, elements=1700, attribute=11, format="N" * 255)), 1)
  if name == "overlapping levels": settings = levels(1000, 100)
  if name == "nothing but levels": settings = levels(many, 0)
  if name == "claims of many items": settings = levels(20, 0x7FFFFFFF)
  if name == "previous version": settings = level(filled(lambda n: start(n, elements=0) + bytes(8)), size // 388, old)
  if name == "previous levels": settings = levels(many, 0, old)
  lists = {"short values": b"1\n", "bad values": b"x\n", "empty values": b"\n", "one line": b"1", "zeros": b"\0"}
  if name in lists: run, long, settings, values = header(1, 1000) + i32(1), header(1) + item(1), level(listed, 1), filled(lists[name])
  for path, content in (("run.ctl", run), ("long.ctl", long), ("out.fif", settings), ("list.txt", values)):
      with open(path, "wb") as file: file.write(content)
  start = b'[layout]\nkind="record"\nrecords=1\ndata="out.csv"\n'
  one = "[[item]]\nname=\"A%d\"\nattribute=1\nlength=1\n"
  layouts = {"items": lambda: filled(b"[[item]]\n", start), "named items": lambda: filled(lambda i: (one % i).encode(), start),
    "references": lambda: filled(lambda i: (one % i + f'values={{type="reference",item="A{i + 1}"}}\n').encode(), start),
    "keys": lambda: filled(lambda i: f"k{i}=1\n".encode()), "arrays": lambda: filled(b"[", b"a="), "tables": lambda: filled(b"a={"),
    "dotted keys": lambda: filled(b"a."), "headers": lambda: filled(lambda i: f"[a{i}.b.c.d]\n".encode()),
    "long array": lambda: filled(b"1,", b"a=["), "array of tables": lambda: filled(b"{a=1},", b"a=["),
    "sparse values": lambda: filled(lambda i: f"k{i}={{}}\n".encode()), "long string": lambda: filled(b"x", b'a="""'), "comments": lambda: filled(b"#\n")}
  if name in layouts:
      with open("l.toml", "wb") as file: file.write(layouts[name]())
file limited
  # A second, and 64 MiB more than it holds; ten seconds, as machines have other work. Sanitizers keep memory of their own.
  import os, subprocess, sys
  is_sanitized = b"libasan" in subprocess.run("ldd $(command -v korvex)", shell=True, capture_output=True).stdout
  for call in sys.argv[1:]:
      with open("said", "wb") as said:
          process = subprocess.Popen(["timeout", "10", *call.split()], stdout=said, stderr=said)
      _, status, usage = os.wait4(process.pid, 0)
      if os.waitstatus_to_exitcode(status) > 2 or (usage.ru_maxrss > 75 << 10 and not is_sanitized):
          print(call, os.waitstatus_to_exitcode(status), usage.ru_maxrss >> 10, "MiB", open("said", "rb").read(500))
  print("ended")
each NAME
  item in every field
  items without settings
  items that are not there
  many items
  many elements
  overlapping levels
  nothing but levels
  claims of many items
  previous version
  previous levels
  short values
  bad values
  empty values
  one line
  zeros
do
  $ python3 make "<NAME>"; python3 limited "korvex show run.ctl" "korvex show long.ctl" "korvex show out.fif" "c_host DGCheckRepeatCnt long.ctl" "c_host DGCreateData run.ctl"
    ended
each NAME
  items
  named items
  references
  keys
  arrays
  tables
  dotted keys
  headers
  long array
  array of tables
  sparse values
  long string
  comments
do
  $ python3 make "<NAME>"; python3 limited "korvex check l.toml" "korvex generate l.toml"
    ended
