"""Waiting for a condition, never for a time."""

import time


def wait_until(condition, what, seconds=30):
    """Returns the first true value of the condition. Raises TimeoutError with `what` if all values are false for `seconds`."""
    limit = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > limit:
            raise TimeoutError(f"waited {seconds} s for {what}")
        time.sleep(0.05)
