"""Reads the headless runner's output with real parsers and prints what they saw.

  parse_output.py jsonl FILE        each line through json.loads: one line per
                                    object, "machine" or "<id> <status> <figure names>"
  parse_output.py openmetrics FILE  the strict OpenMetrics parser of
                                    prometheus_client: "<family> <type>" then
                                    "  <labels> <value>" per sample
Exits non-zero (with the parser's error) when the text does not parse.
"""
import json
import sys


def jsonl(text):
    for line in text.splitlines():
        record = json.loads(line)
        if "machine" in record:
            print("machine " + " ".join(sorted(record["machine"].keys())))
        else:
            print("%d %d %s" % (record["id"], record["status"], " ".join(record["figures"])))


def openmetrics(text):
    from prometheus_client.openmetrics.parser import text_string_to_metric_families

    for family in text_string_to_metric_families(text):
        print("%s %s" % (family.name, family.type))
        for sample in family.samples:
            labels = ",".join("%s=%s" % kv for kv in sorted(sample.labels.items()))
            print("  %s %r" % (labels, sample.value))


if __name__ == "__main__":
    with open(sys.argv[2], encoding="utf-8") as f:
        {"jsonl": jsonl, "openmetrics": openmetrics}[sys.argv[1]](f.read())
