#!/usr/bin/env bash
# Makes a file in parts by a Slurm of its own: a controller and four node daemons on this machine.
# One task is killed, one requeued and the controller restarted on the way; the joined parts must be
# the whole file. Ends with 77, which skips the test, where a Slurm can't run.
# Usage: slurm.sh KORVEX
set -euo pipefail

export KORVEX=$1
readonly nodes=4
readonly parts=64
readonly killed_part=10
readonly requeued_part=20
readonly lost_part=30
readonly seconds_to_start=30
readonly seconds_to_end=240

PATH=$PATH:/usr/sbin:/sbin

skip() {
  echo "skipped: $*"
  exit 77
}

for tool in munged slurmctld slurmd sbatch scontrol sinfo squeue; do
  command -v "$tool" >/dev/null || skip "$tool is not installed"
done

# Sockets can't have long paths. The client reaches munged's socket only where all users may pass.
root=$(mktemp -d /tmp/korvex-slurm-XXXXXX)
chmod 755 "$root"
declare -A daemons=()

stop_daemons() {
  local pids=("${daemons[@]}")
  [ "${#pids[@]}" -eq 0 ] || kill "${pids[@]}" 2>/dev/null || true
  wait 2>/dev/null || true
  pkill -f "$root/" 2>/dev/null || true
}
finish() {
  local status=$?
  stop_daemons
  if [ "$status" -ne 0 ] && [ "$status" -ne 77 ]; then tail -n 5 "$root"/slurmctld.log; cat "$root"/work/{slurm-*.out,verified} || true; fi
  rm -rf "$root"
  exit "$status"
}
trap finish EXIT
trap 'exit 1' INT TERM

# until_true SECONDS COMMAND: waits until the command succeeds.
until_true() {
  local end=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ "$SECONDS" -lt "$end" ] || return 1
    sleep 0.1
  done
}

free_ports() {
  python3 - "$1" <<'END'
import socket, sys
held = [socket.socket() for _ in range(int(sys.argv[1]))]
for s in held:
    s.bind(("127.0.0.1", 0))
print(*(s.getsockname()[1] for s in held))
END
}

start() {
  local name=$1
  shift
  "$@" >>"$root/$name.log" 2>&1 &
  daemons[$name]=$!
}

read -r -a ports < <(free_ports $((nodes + 1)))
host=$(hostname -s)
user=$(id -un)
mkdir "$root"/{state,spool,munge,work}
chmod 700 "$root"/munge
(umask 077 && head -c 128 /dev/urandom >"$root/munge/key")
{
  cat <<END
ClusterName=korvex
SlurmctldHost=$host(127.0.0.1)
SlurmUser=$user
SlurmdUser=$user
SlurmctldPort=${ports[0]}
AuthType=auth/munge
AuthInfo=socket=$root/munge/socket
CredType=cred/munge
StateSaveLocation=$root/state
SlurmdSpoolDir=$root/spool/%n
SlurmctldPidFile=$root/slurmctld.pid
SlurmdPidFile=$root/slurmd-%n.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SchedulerType=sched/builtin
SchedulerParameters=batch_sched_delay=0,sched_min_interval=100000
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
ReturnToService=2
JobRequeue=1
KillWait=1
MinJobAge=600
UnkillableStepTimeout=120
SlurmdParameters=config_overrides
END
  for ((i = 1; i <= nodes; ++i)); do
    echo "NodeName=n$i NodeHostname=$host NodeAddr=127.0.0.1 Port=${ports[i]} CPUs=2 State=UNKNOWN"
  done
  echo "PartitionName=all Nodes=n[1-$nodes] Default=YES MaxTime=INFINITE State=UP"
} >"$root/slurm.conf"
export SLURM_CONF=$root/slurm.conf

force=()
[ "$(id -u)" -ne 0 ] || force=(--force)
start munged munged --foreground "${force[@]}" --key-file="$root/munge/key" --socket="$root/munge/socket" \
  --pid-file="$root/munge/pid" --seed-file="$root/munge/seed" --log-file="$root/munge/log"
chmod 755 "$root/munge"
until_true "$seconds_to_start" test -S "$root/munge/socket" || skip "munged does not start"
start slurmctld slurmctld -D
for ((i = 1; i <= nodes; ++i)); do start "slurmd-n$i" slurmd -D -N "n$i"; done
nodes_are_there() { [ "$(sinfo -h -N -t idle,mix,alloc,comp -o %N | wc -l)" -eq "$nodes" ]; }
until_true "$seconds_to_start" nodes_are_there || skip "the nodes do not come up"

cd "$root/work"
cat >layout.toml <<'END'
[layout]
kind = "table"
records = 100000
data = "whole.csv"

[[item]]
name = "A"
attribute = "decimal"
digits = 7
values = { type = "range", format = "%7U", start = 1, end = 9999999 }

[[item]]
name = "B"
attribute = "character"
length = 4
values = { type = "range", format = "%4s", start = "aaaa" }
END
"$KORVEX" export layout.toml -o whole.csv --quiet
mv whole.csv expected

# Stands for korvex in the tasks. At their first attempts one part is killed and two do not end.
cat >korvex <<END
#!/bin/sh
for word; do case \$word in */$parts) part=\${word%%/*} ;; esac; done
echo "\$part" >>attempts
if mkdir "attempt-\$part" 2>/dev/null; then
  case \$part in
    $killed_part) kill -9 \$\$ ;;
    $requeued_part | $lost_part) exec sleep 1000 ;;
  esac
fi
exec "$KORVEX" "\$@"
END
chmod +x korvex
"$KORVEX" plan layout.toml --parts "$parts" --for slurm -o whole.csv | sed "s/sleep [0-9]*/sleep 10/" >plan

parts_have_begun() { test -d "attempt-$1" && test -d "attempt-$2"; }
# A requeued task waits for two minutes unless it is told to begin.
job_has_ended() {
  squeue -h -r -t PD -o '%i %r' | awk '$2 == "BeginTime" { print $1 }' |
    xargs -r -I ID scontrol update JobId=ID StartTime=now
  [ -z "$(squeue -h -j "$1" 2>/dev/null)" ]
}
submit() { KORVEX=./korvex sbatch --parsable plan; }

job=$(submit)
until_true "$seconds_to_end" parts_have_begun "$requeued_part" "$lost_part"
kill "${daemons[slurmctld]}"
wait "${daemons[slurmctld]}" || true
start slurmctld slurmctld -D
until_true "$seconds_to_start" nodes_are_there
scontrol requeue "${job}_$requeued_part"
scancel --full --signal=KILL "${job}_$lost_part"
until_true "$seconds_to_end" job_has_ended "$job"

# The killed and the requeued part were begun twice, all others once.
sort attempts | uniq -d | diff <(printf '%s\n' "$killed_part" "$requeued_part") -
[ "$(sort -u attempts | wc -l)" -eq "$parts" ]

# One part is lost with its task, and verify says which.
status=0
"$KORVEX" verify layout.toml whole.csv >verified 2>&1 || status=$?
[ "$status" -eq 1 ]
grep -q "whole.csv.part-$lost_part-of-$parts: " verified
[ "$(grep -c "part-..-of-$parts" verified)" -eq 1 ]

# Submitted again, the plan makes that part and no other.
touch mark
sleep 0.1
job=$(submit)
until_true "$seconds_to_end" job_has_ended "$job"
"$KORVEX" verify layout.toml whole.csv
find . -name 'whole.csv.*' -newer mark | sort >made
printf './whole.csv.part-%s-of-%s\n' "$lost_part" "$parts" "$lost_part" "$parts.manifest" | diff - made
cat whole.csv.part-??-of-"$parts" | cmp - expected
