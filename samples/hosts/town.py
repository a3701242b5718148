import sys
import orvane4                                   # PYTHONPATH=build/release/python

c = orvane4.Orvane4Ctrl(width=800, height=600)   # the control on a window without a screen
c.OrvInit()
c.paint()                                        # the first paint makes the buffers
c.OrvAddLayer("TOWN", 1, orvane4.OrvLTPolygon, 0)
c.OrvSetLayColor("TOWN", 0x80C0A0)               # blue, green, red
c.OrvAddDatEx("TOWN", 1, 7, 0, [0.0, 900.0, 400.0, 0.0], [0.0, 100.0, 700.0, 0.0], [0.0, 0.0, 0.0, 0.0])
c.OrvDspFit2(5)                                  # 5 per cent of margin
c.save_png(sys.argv[1])
