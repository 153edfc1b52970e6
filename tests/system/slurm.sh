#!/bin/bash
# A campaign as an array of jobs of Slurm against the same campaign on its own.
#
# usage: slurm.sh CAMPAIGN MODULE.zuc WORK
#
# One node, with a configuration and a key of its own under WORK; what the script starts ends with it.
# Status 77 where Slurm is not installed.
set -eu
campaign=$1 module=$2 work=$3/slurm
PATH=$PATH:/usr/sbin
for tool in munged slurmctld slurmd sbatch; do
  command -v "$tool" >/dev/null || { echo "no $tool"; exit 77; }
done
rm -rf "$work"
mkdir -p "$work/state" "$work/spool"
chmod 755 "$work"
started=()
end() {
  for ((k = ${#started[@]} - 1; k >= 0; --k)); do
    kill "${started[k]}" 2>/dev/null || true
    wait "${started[k]}" 2>/dev/null || true
  done
  rm -rf "$sockets"
}
sockets=$(mktemp -d) # the path of a socket is short
chmod 755 "$sockets"
trap end EXIT
fail() {
  echo "$1"
  tail -n 20 "$work"/*.log
  exit 1
}

dd if=/dev/urandom of="$work/key" bs=128 count=1 2>/dev/null
chmod 600 "$work/key"
munged --foreground --force --key-file="$work/key" --socket="$sockets/munge" --pid-file="$work/munged.pid" \
  --log-file="$work/munged.log" --seed-file="$work/seed" >"$work/munged.out.log" 2>&1 &
started+=($!)

port=$((20000 + $$ % 20000))
cat >"$work/slurm.conf" <<END
ClusterName=campaigns
SlurmctldHost=$(hostname)(127.0.0.1)
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$sockets/munge
SlurmctldPort=$port
SlurmdPort=$((port + 1))
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
SwitchType=switch/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerType=sched/builtin
ReturnToService=2
SlurmdParameters=config_overrides
NodeName=node NodeHostname=$(hostname) NodeAddr=127.0.0.1 CPUs=2 State=UNKNOWN
PartitionName=all Nodes=node Default=YES MaxTime=INFINITE State=UP
END
export SLURM_CONF=$work/slurm.conf
# No control groups are used; the plugin is loaded all the same.
printf 'CgroupPlugin=cgroup/v1\nCgroupMountpoint=%s\n' "$work/cgroup" >"$work/cgroup.conf"
for _ in $(seq 50); do
  [ ! -S "$sockets/munge" ] || break
  sleep 0.2
done
slurmctld -D >"$work/slurmctld.out.log" 2>&1 &
started+=($!)
slurmd -D -N node >"$work/slurmd.out.log" 2>&1 &
started+=($!)

asked=(--runs 5000 --instants 20 --seed 3 --never carry "$module")
cat >"$work/part.sh" <<END
#!/bin/sh
exec "$campaign" --shard auto/4 -o "$work/part\$SLURM_ARRAY_TASK_ID.json" ${asked[@]}
END
# Jobs whose part fails end with 1, and so does the array.
submit() {
  timeout 60 sbatch --wait --array="$1" --output="$work/job-%a.log" "$work/part.sh" >"$work/sbatch.log" 2>&1 ||
    [ $? = 1 ] || fail "sbatch --array=$1"
}
for _ in $(seq 100); do
  [ "$(sinfo -h -o %T 2>"$work/sinfo.log")" = idle ] && break
  sleep 0.2
done
submit 1-4
rm -f "$work/part3.json"
"$campaign" --merge "$work"/part*.json >"$work/merged.json" 2>"$work/merge.log" && fail "merged what is not whole"
grep -q "of 4 shards, 3 is missing" "$work/merge.log" || fail "a shard is missing, and it is not told"
submit 3
cd "$work"
"$campaign" --merge "$work"/part*.json >"$work/merged.json" 2>"$work/merge.log" || [ $? = 1 ] || fail "no merge"
"$campaign" "${asked[@]}" >"$work/alone.json" 2>"$work/alone.log" || [ $? = 1 ] || fail "no campaign"
[ -s "$work/alone.json" ] || fail "no result"
cmp "$work/merged.json" "$work/alone.json" || fail "the parts are not the whole"
