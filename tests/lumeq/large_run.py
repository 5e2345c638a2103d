"""A run of ten thousand calls, as `lumeq view` reads it."""

from viewed import event, log_line, refusal

SCHEMA = {"schema": "app_event_task_device_config/1.0.0"}


def large_run(calls: int = 10_000) -> dict[str, list]:
    """Every tenth call is refused, and two in ten begin and end a task."""
    session, log, companion, host = [], [], [], []
    for number in range(calls):
        second, screen = number / 250 % 60, f"Screen{number % 97}"
        is_refused = number % 10 == 5
        if number % 10 in (7, 8):
            name = "DeviceConfigInitiated" if number % 10 == 7 else "DeviceConfigCompleted"
            session.append({"call": name, "handle": "t"} if number % 10 == 7 else
                           {"call": name, "taskHandle": "t", "taskResult": "success", "settingType": 1})
            log.append(log_line("taskHandle: 0x00, taskResult: \"success\", settingType: unknown" if number % 10 == 8 else
                                "localContext: (null), globalContext: (null)", name, second=second))
            companion.append(event("initiated" if number % 10 == 7 else "completed", "task", "task_device_config",
                                   {**SCHEMA, "task_result": "success", "task_duration": "4"} if number % 10 == 8 else None))
            host.append({"call": name, "handle": "set" if number % 10 == 7 else "null"})
            continue
        mode = "dark__v2" if is_refused else "dark"
        session.append({"call": "ButtonClicked", "flow": "setup", "screenPath": "network/wireless", "screenName": screen, "mode": mode,
                        "controlName": "connect", "localContext": {"attempt": str(number)}})
        log.append(log_line(f'flow: "setup", screenPath: "network/wireless", screenName: "{screen}", mode: "{mode}", '
                            'controName: "connect", localContext: [1 item(s)], globalContext: (null)', "ButtonClicked", second=second))
        host.append({"call": "ButtonClicked"})
        if is_refused:
            log.append(refusal("ButtonClicked", f'invalid [optional] mode arg: "{mode}"', second=second))
        else:
            companion.append(event("clicked", "button", f"/setup.flow/network/wireless/{screen}-{mode}#connect", attempt=str(number)))
    return {"session": session, "log": log, "companion": companion, "host": host}
