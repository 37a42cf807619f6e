"""Shows the Python module at work on the installed boards: the catalogue,
one board walked down to a pin with every property of each object on the
way, and a jumper flipped and taken back."""
import zrboard

print("installed boards:")
for b in zrboard.objects(zrboard.get_boards()):
    print("  %-26s %s" % (b.name, b.display_name))
board = zrboard.current_board("korvelhw:tarnwick:1.2")
print("\nproject board: %s" % board.name)
for component in zrboard.objects(zrboard.get_board_components(board)):
    print("  %-42s %-10s %s" % (component.name, component.type,
                                 zrboard.get_board_component_interfaces(component)))

fpga = zrboard.get_board_components(board, "*part0*")
leds = zrboard.get_board_component_interfaces(fpga, "led_8bits")
port = zrboard.get_board_interface_ports(leds)
pin = zrboard.objects(zrboard.get_board_component_pins(port))[0]
for obj in (board, fpga, leds, port, pin):
    print("\n%s %s:" % (obj.CLASS, obj.name))
    zrboard.report_property(obj)

jp9 = zrboard.get_board_jumpers(board, "jp9")
pmod = zrboard.get_board_buses(board, "part0_pmod_ja_1")
print("\njp9 %s: %s enabled %s" % (jp9.current_value, pmod.name, pmod.is_enabled))
jp9.current_value = True
print("jp9 %s: %s enabled %s" % (jp9.current_value, pmod.name, pmod.is_enabled))
zrboard.undo()
print("undo: jp9 %s, %s enabled %s" % (jp9.current_value, pmod.name, pmod.is_enabled))
