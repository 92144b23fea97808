#!/usr/bin/env python3
# Parses OpenMetrics text from stdin with the Prometheus client's parser and
# prints each sample as "name{labels} value", each family as "# name type".
# Exit 3 when the parser is not installed, 1 when it rejects the text.
import sys

try:
    from prometheus_client.openmetrics.parser import text_string_to_metric_families
except ImportError:
    print("python3-prometheus-client is not installed", file=sys.stderr)
    sys.exit(3)

lines = []
try:
    for family in text_string_to_metric_families(sys.stdin.read()):
        lines.append(f"# {family.name} {family.type} {family.unit}")
        for sample in family.samples:
            labels = ",".join(f'{k}="{v}"' for k, v in sorted(sample.labels.items()))
            lines.append(f"{sample.name}{{{labels}}} {sample.value:g}")
except Exception as error:  # the parser raises ValueError and friends
    # Nothing of a rejected text counts as read.
    print(f"rejected: {error}", file=sys.stderr)
    sys.exit(1)
print("\n".join(lines))
