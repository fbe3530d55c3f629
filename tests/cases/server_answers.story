# Whatever a server answers, import ends in an orderly way. A server in between turns the fields of
# one answer after the other into something else, or hands over an answer of another kind.
databases postgresql
file between.py
  import os, re, socket, struct, subprocess, sys, threading

  FOLDER, DATABASE = re.match(r"postgresql:host=(\S+) user=korvex dbname=(\S+)", sys.argv[1]).groups()
  FIELDS = {"empty": b"", "text": b"x", "huge": b"9" * 20, "null": None}

  def row(count, field):
      data = struct.pack("!h", count)
      for _ in range(count):
          data += struct.pack("!i", -1) if field is None else struct.pack("!i", len(field)) + field
      return b"D" + struct.pack("!i", len(data) + 4) + data

  def changed(kind, data, how):
      """What the client gets for a message of the answer that is not left alone."""
      message = kind + struct.pack("!i", len(data) + 4) + data
      if how == "copies":
          return b"H" + struct.pack("!ibh", 7, 0, 0) if kind == b"T" else b""
      if how == "narrow":
          # The first column alone, with the row's first field.
          if kind == b"T":
              end = data.index(b"\0", 2) + 19
              return b"T" + struct.pack("!ih", end + 4, 1) + data[2:end]
          return row(1, b"1") if kind == b"D" else message
      if kind == b"T":
          return message if how != "rows" else message + row(struct.unpack("!h", data[:2])[0], b"1")
      if kind != b"D" or how == "rows":
          return message
      return b"" if how == "no rows" else row(struct.unpack("!h", data[:2])[0], FIELDS[how])

  def receive(stream, size):
      data = b""
      while len(data) < size:
          piece = stream.recv(size - len(data))
          if not piece:
              raise OSError
          data += piece
      return data

  def serve(listener, number, how, seen):
      client, _ = listener.accept()
      server = socket.socket(socket.AF_UNIX)
      server.connect(FOLDER + "/.s.PGSQL.5432")

      def to_server():
          try:
              while data := client.recv(65536):
                  server.sendall(data)
          except OSError:
              pass
          server.shutdown(socket.SHUT_RDWR)

      threading.Thread(target=to_server, daemon=True).start()
      answer = 0
      try:
          while True:
              kind, size = struct.unpack("!ci", receive(server, 5))
              data = receive(server, size - 4)
              answer += kind == b"T"
              is_chosen = answer == number and kind in (b"T", b"D")
              client.sendall(changed(kind, data, how) if is_chosen else kind + struct.pack("!i", size) + data)
      except OSError:
          client.close()
      seen.append(answer)

  listener = socket.socket(socket.AF_UNIX)
  listener.bind(".s.PGSQL.5432")
  listener.listen()
  answers, refused = 1, 0
  number = 0
  while number < answers:
      number += 1
      for how in [*FIELDS, "rows", "no rows", "narrow", "copies"]:
          seen = []
          thread = threading.Thread(target=serve, args=(listener, number, how, seen))
          thread.start()
          target = f"postgresql:host={os.getcwd()} user=korvex dbname={DATABASE}"
          done = subprocess.run(["korvex", "import", target, "goods", "-o", "t.toml", "--force"],
                                capture_output=True, timeout=20)
          thread.join()
          answers = max(answers, *seen)
          refused += done.returncode == 1
          if done.returncode not in (0, 1) or (done.returncode == 1 and not done.stderr):
              print("answer", number, how, "status", done.returncode, done.stderr)
  print("orderly" if answers >= 10 and refused >= 30 else f"{answers} answers, {refused} refused")
sql
  CREATE TYPE mood AS ENUM ('low', 'high');
  CREATE TABLE parents (k integer PRIMARY KEY);
  INSERT INTO parents VALUES (1), (2);
  CREATE TABLE goods (id integer PRIMARY KEY, code varchar(5) UNIQUE, m mood, k integer REFERENCES parents);
$ python3 between.py "<target>"
  orderly
